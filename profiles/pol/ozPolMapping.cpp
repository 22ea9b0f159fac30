#include "ozPolMapping.h"

#include <limits>

#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozPolText.h"

namespace {

// The value-name prefixes with a meaning of their own, in the lower-case spelling policy
// editors write. Other spellings stay values of their own name, which keeps them as they came.
constexpr std::u16string_view kDeleteValue = u"**del.";
constexpr std::u16string_view kEraseValues = u"**delvals.";
// The data written for both: a one-blank string with its terminator, as policy editors write.
const std::string kBlankString("\x20\0\0\0", 4);

std::string Describe(ozSubKey& key, const ozRegValue* value)
{
    std::string where = "key \"" + key.KeyPath() + "\"";
    if (value != nullptr)
        where = "value \"" + std::string(value->Name() != nullptr ? value->Name() : "") + "\" of " +
                where;
    return where;
}

}  // namespace

ozStatus ozPolSettingOf(const ozPolRecord& record, ozPolSetting& setting)
{
    setting.keyPath = ozPolNarrow(record.key);
    if (setting.keyPath.size() >= static_cast<std::size_t>(ozSubKey::KeyPathCapacity))
        return ozPolErrorAt(record.offset,
                            "the key path has " + std::to_string(setting.keyPath.size()) +
                                " bytes; key paths of at most " +
                                std::to_string(ozSubKey::KeyPathCapacity - 1) + " are held");
    std::u16string_view name = record.name;
    setting.type = record.type;
    setting.data.clear();
    if (name == kEraseValues) {
        setting.action = tPOLACTION::EraseValues;
        setting.valueName.clear();
        return ozStatus::Ok();
    }
    if (name.empty() && record.type == RegNone && record.data.empty()) {
        setting.action = tPOLACTION::CreateKey;
        setting.valueName.clear();
        return ozStatus::Ok();
    }
    if (name.substr(0, kDeleteValue.size()) == kDeleteValue) {
        setting.action = tPOLACTION::DeleteValue;
        setting.valueName = ozPolNarrow(name.substr(kDeleteValue.size()));
        return ozStatus::Ok();
    }
    setting.action = tPOLACTION::SetValue;
    setting.valueName = ozPolNarrow(name);
    if (ozPolIsTextType(record.type)) {
        // The reader has checked the even length; the units are assembled little-endian.
        std::u16string units(record.data.size() / 2, u'\0');
        for (std::size_t i = 0; i < units.size(); ++i)
            units[i] =
                static_cast<char16_t>(static_cast<unsigned char>(record.data[2 * i]) |
                                      static_cast<unsigned char>(record.data[2 * i + 1]) << 8);
        setting.data = ozPolNarrow(units);
    } else {
        setting.data = record.data;
    }
    return ozStatus::Ok();
}

namespace {

std::string BytesOf(const std::u16string& units)
{
    std::string bytes;
    bytes.reserve(units.size() * 2);
    for (char16_t unit : units) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

}  // namespace

ozStatus ozPolRecordsOfKey(ozSubKey& key, std::vector<ozPolRecord>& records)
{
    char path[ozSubKey::KeyPathCapacity];
    if (!key.GetKeyPath(path))
        return ozStatus::Error("the path of " + Describe(key, nullptr) +
                               " is too long to be written");
    const std::u16string keyPath = ozPolWide(path);
    const CCollection<ozRegValue>& values = key.Values();
    if (key.Op() == KeyOpEraseValues)
        records.push_back({keyPath, std::u16string(kEraseValues), RegSz, kBlankString, 0});
    else if (key.Save() && values.Count() == 0)
        records.push_back({keyPath, std::u16string(), RegNone, std::string(), 0});
    for (int i = 0; i < values.Count(); ++i) {
        const ozRegValue* value = values.At(i);
        if (value->RIT() != RitR && value->RIT() != RitM)
            continue;
        std::u16string name = ozPolWide(value->Name() != nullptr ? value->Name() : "");
        switch (value->Op()) {
            case OpDelete:
                records.push_back(
                    {keyPath, std::u16string(kDeleteValue) + name, RegSz, kBlankString, 0});
                continue;
            case OpInsert:
            case OpChange:
                break;
            default:
                return ozStatus::Error(Describe(key, value) + " has operation '" +
                                       static_cast<char>(value->Op()) +
                                       "', which a Registry.pol file cannot express");
        }
        std::string data;
        if (value->Data() != nullptr)
            data.assign(reinterpret_cast<const char*>(value->Data()), value->Size());
        auto type = static_cast<std::uint32_t>(value->Type());
        if (ozPolIsTextType(type))
            data = BytesOf(ozPolWide(data));
        if (data.size() >= std::numeric_limits<std::uint32_t>::max())
            return ozStatus::Error(Describe(key, value) + " has more data than a record holds");
        records.push_back({keyPath, std::move(name), type, std::move(data), 0});
    }
    return ozStatus::Ok();
}
