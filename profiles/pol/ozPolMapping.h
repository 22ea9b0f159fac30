// What Registry.pol records mean in the registry model, both ways (docs/pol-mapping.md):
//   - a record with a plain value name sets that value: operation 'I', item type 'r', the
//     record's type and data (text types converted to narrow text, see ozPolText);
//   - "**del.<name>" deletes one value: the value <name> with operation 'D';
//   - "**delvals." erases the values of its key: the key's operation 'E';
//   - a record with an empty value name, type REG_NONE and no data creates its key: the key
//     is saved (the key's Save flag), without a value;
//   - every other name, "**DeleteValues", "**DeleteKeys", "**SecureKey", "**soft.<name>" and
//     other spellings of the prefixes among them, is a value that keeps its name, operation
//     'I', so that it is written back as it came.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ozPolFormat.h"
#include "platform/ozStatus.h"

class ozSubKey;

// What one record asks of the model.
enum class tPOLACTION {
    SetValue,     // the value valueName of keyPath gets type and data, operation 'I'
    DeleteValue,  // the value valueName of keyPath gets operation 'D'
    EraseValues,  // the key keyPath gets operation 'E'
    CreateKey,    // the key keyPath is saved, without a value
};

struct ozPolSetting {
    tPOLACTION action = tPOLACTION::SetValue;
    std::string keyPath;    // narrow text, components separated by backslashes
    std::string valueName;  // narrow text; for DeleteValue without the prefix
    std::uint32_t type = 0;
    std::string data;  // as the model keeps it: text types as narrow text
};

// The setting of one record. Fails, at the record's offset (ozPolErrorAt), when the model
// cannot hold the key path: a component longer than the model's key names or a path longer
// than the model's key paths.
ozStatus ozPolSettingOf(const ozPolRecord& record, ozPolSetting& setting);

// Appends the records of one model key, in the order a file holds them: "**delvals." for a
// key with operation 'E', the key-creation record for a saved key with operation 'I' and no
// values (keys without the Save flag and without values give no record), then one record per
// value of item type 'r' or 'm' in the key's order (other item types are not registry values
// and are left out). Operations 'I' and 'C' write the value's (new) data, 'D' writes
// "**del.<name>". Fails, with a message naming key and value, for a key path the
// model cannot give, for operations 'A', 'L' and 'R', which have no record form, and for data
// of 4 GiB or more; records then holds what was appended before.
ozStatus ozPolRecordsOfKey(ozSubKey& key, std::vector<ozPolRecord>& records);
