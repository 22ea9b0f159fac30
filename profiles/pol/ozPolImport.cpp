#include "ozPolImport.h"

#include <cerrno>
#include <cstdio>
#include <exception>

#include "core/registry/ozSubKey.h"
#include "ozPolFormat.h"
#include "ozPolMapping.h"
#include "platform/ozWholeFile.h"

namespace {

constexpr unsigned int kUserRoot = 1;
constexpr unsigned int kMachineRoot = 2;

}  // namespace

ozPolImport::ozPolImport() = default;

ozPolImport::~ozPolImport() = default;

bool ozPolImport::ImportUserProfile(const char* file)
{
    return Import(file, kUserRoot);
}

bool ozPolImport::ImportMachineProfile(const char* file)
{
    return Import(file, kMachineRoot);
}

bool ozPolImport::Fail(std::string message)
{
    m_lastError = std::move(message);
    std::fprintf(stderr, "ozRegPOL: %s\n", m_lastError.c_str());
    return false;
}

bool ozPolImport::Apply(unsigned int root, const ozPolSetting& setting)
{
    if (setting.action == tPOLACTION::EraseValues || setting.action == tPOLACTION::CreateKey) {
        ozSubKey* key = _CreateKey(root, setting.keyPath.c_str());
        if (key == nullptr)
            return false;
        if (setting.action == tPOLACTION::EraseValues)
            key->Op(KeyOpEraseValues);
        key->Save(true);
        return true;
    }
    ozRegValue* value =
        _CreateValue(root, setting.keyPath.c_str(), setting.valueName.c_str(), RitR);
    if (value == nullptr)
        return false;
    value->RIT(RitR);
    if (setting.action == tPOLACTION::DeleteValue)
        return value->SetDelete();
    value->Op(OpInsert);
    return value->SetData(setting.type, static_cast<unsigned long>(setting.data.size()),
                          reinterpret_cast<const unsigned char*>(setting.data.data()));
}

bool ozPolImport::Import(const char* file, unsigned int root)
{
    // No file named: the control reads the user profile first, also when only a machine
    // profile is to be read.
    if (file == nullptr || *file == '\0')
        return true;
    try {
        std::string bytes;
        if (ozStatus read = ozReadWholeFile(file, bytes); !read)
            return read.Code() == ENOENT || Fail(read.Message());
        if (bytes.empty())
            return true;

        // The whole file is checked first, so that a file that fails leaves the trees alone;
        // the second reading applies it. Neither keeps more than one record at a time.
        ozPolSetting setting;
        auto check = [&setting](const ozPolRecord& record) {
            return ozPolSettingOf(record, setting);
        };
        if (ozStatus checked = ozForEachPolRecord(bytes, check); !checked)
            return Fail(std::string(file) + ": " + checked.Message());
        auto apply = [&](const ozPolRecord& record) {
            if (ozStatus read = ozPolSettingOf(record, setting); !read)
                return read;
            if (Apply(root, setting))
                return ozStatus::Ok();
            return ozPolErrorAt(record.offset, "the model refused the record");
        };
        if (ozStatus applied = ozForEachPolRecord(bytes, apply); !applied)
            return Fail(std::string(file) + ": " + applied.Message());
        return true;
    } catch (const std::exception& e) {
        return Fail(std::string(file) + ": " + e.what());
    }
}
