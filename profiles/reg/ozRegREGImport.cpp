#include "ozRegREGImport.h"

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
    // No file named: the control reads the user profile first, also when only a machine
    // profile is to be read.
    if (file == nullptr || *file == '\0')
        return true;
    if (CodeHandle() == nullptr) {
        ozRegReport(std::string(file) + ": no model to read into");
        return false;
    }
    std::string bytes;
    std::string readError;
    if (!ozReadWholeFile(file, bytes, readError)) {
        ozRegReport(readError);
        return false;
    }
    ozWideString text;
    tREGFILEENCODING encoding;
    std::string problem;
    if (!ozRegDecodeFile(bytes, text, encoding, problem)) {
        ozRegReport(std::string(file) + ": " + problem);
        return false;
    }
    ozRegFileReader reader;
    bool read = reader.Read(text, [this](const ozRegFileEntry& entry, std::string& refusal) {
        return Apply(entry, refusal);
    });
    if (!read)
        ozRegReport(std::string(file) + ":" + std::to_string(reader.Line()) + ": " +
                    reader.Problem());
    return read;
}

bool ozRegREGImport::Apply(const ozRegFileEntry& entry, std::string& problem)
{
    // The model keeps key paths in a buffer of fixed size; a longer path could not be
    // written back.
    if (entry.keyPath.size() >= static_cast<size_t>(ozSubKey::KeyPathCapacity)) {
        problem = "the key path is longer than " + std::to_string(ozSubKey::KeyPathCapacity - 1) +
                  " bytes";
        return false;
    }
    ozSubKey* key = _CreateKey(entry.root, entry.keyPath.c_str());
    if (key == nullptr) {
        problem = "the key \"" + entry.keyPath + "\" cannot be created (a key name is too long)";
        return false;
    }
    if (entry.kind == ozRegFileEntry::Kind::Key) {
        key->Save(true);  // the section itself says the key is there, values or not
        return true;
    }
    if (entry.kind == ozRegFileEntry::Kind::DeletedKey) {
        // The model's nearest operation: the key's values are to be erased.
        key->Op(KeyOpEraseValues);
        return true;
    }
    ozRegValue* value = _CreateValue(entry.root, entry.keyPath.c_str(), entry.name.c_str(), RitR);
    if (value == nullptr) {
        problem = "the value \"" + entry.name + "\" cannot be created";
        return false;
    }
    value->RIT(RitR);
    if (entry.kind == ozRegFileEntry::Kind::DeletedValue)
        return value->SetDelete();
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
    if (!stored)
        problem = "the value \"" + entry.name + "\" cannot be stored";
    return stored;
}
