#include "ozRegREGImport.h"

#include <new>

#include "core/registry/ozSubKey.h"
#include "ozRegFileReader.h"
#include "ozRegMessage.h"
#include "platform/ozWholeFile.h"

bool ozRegREGImport::ImportUserProfile(const char* file)
{
    return Import(file);
}

bool ozRegREGImport::ImportMachineProfile(const char* file)
{
    return Import(file);
}

bool ozRegREGImport::Import(const char* file)
{
    // Nothing may be thrown back across the library's interface.
    try {
        return ReadFile(file);
    } catch (const std::bad_alloc&) {
        ozRegReport(std::string(file != nullptr ? file : "") + ": out of memory");
        return false;
    }
}

bool ozRegREGImport::ReadFile(const char* file)
{
    // No file named: the control reads the user profile first, also when only a machine
    // profile is to be read.
    if (file == nullptr || *file == '\0')
        return true;
    if (CodeHandle() == nullptr) {
        ozRegReport(std::string(file) + ": no model to read into");
        return false;
    }
    std::string bytes;
    if (ozStatus read = ozReadWholeFile(file, bytes); !read) {
        ozRegReport(read.Message());
        return false;
    }
    ozWideString text;
    tREGFILEENCODING encoding;
    if (ozStatus decoded = ozRegDecodeFile(bytes, text, encoding); !decoded) {
        ozRegReport(std::string(file) + ": " + decoded.Message());
        return false;
    }
    ozRegFileReader reader;
    ozStatus read = reader.Read(text, [this](const ozRegFileEntry& entry) { return Apply(entry); });
    if (!read)
        ozRegReport(std::string(file) + ":" + std::to_string(read.Line()) + ": " + read.Message());
    return read.IsOk();
}

ozStatus ozRegREGImport::Apply(const ozRegFileEntry& entry)
{
    // The model keeps key paths in a buffer of fixed size; a longer path could not be
    // written back.
    if (entry.keyPath.size() >= static_cast<size_t>(ozSubKey::KeyPathCapacity))
        return ozStatus::Error("the key path is longer than " +
                               std::to_string(ozSubKey::KeyPathCapacity - 1) + " bytes");
    ozSubKey* key = _CreateKey(entry.root, entry.keyPath.c_str());
    if (key == nullptr)
        return ozStatus::Error("the key \"" + entry.keyPath +
                               "\" cannot be created (a key name is too long)");
    if (entry.kind == ozRegFileEntry::Kind::Key) {
        key->Save(true);  // the section itself says the key is there, values or not
        return ozStatus::Ok();
    }
    if (entry.kind == ozRegFileEntry::Kind::DeletedKey) {
        // The model's nearest operation: the key's values are to be erased.
        key->Op(KeyOpEraseValues);
        return ozStatus::Ok();
    }
    ozRegValue* value = _CreateValue(entry.root, entry.keyPath.c_str(), entry.name.c_str(), RitR);
    if (value == nullptr)
        return ozStatus::Error("the value \"" + entry.name + "\" cannot be created");
    value->RIT(RitR);
    std::string refused = "the value \"" + entry.name + "\" cannot be stored";
    if (entry.kind == ozRegFileEntry::Kind::DeletedValue)
        return value->SetDelete() ? ozStatus::Ok() : ozStatus::Error(refused);
    value->Op(OpInsert);
    bool stored = false;
    switch (entry.form) {
        case ozRegFileEntry::Form::String:
            stored = value->SetString(entry.data.c_str());
            break;
        case ozRegFileEntry::Form::Number:
            stored = value->SetDWORD(entry.number);
            break;
        case ozRegFileEntry::Form::Bytes: {
            // An empty list still needs a buffer to copy from.
            static const unsigned char none = 0;
            const auto* data = entry.data.empty()
                                   ? &none
                                   : reinterpret_cast<const unsigned char*>(entry.data.data());
            stored =
                value->SetData(entry.type, static_cast<unsigned long>(entry.data.size()), data);
            break;
        }
    }
    return stored ? ozStatus::Ok() : ozStatus::Error(refused);
}
