// One registry entry that a configured policy produces: root, key path, value name, value and
// two flags, with its one-line export text (for example "HKLM\Software\Pol","Enabled",
// "REG_DWORD","1" in double quotes).
#pragma once

#include <memory>
#include <string>

#include "ozADMValue.h"
#include "platform/ozRegistryTypes.h"

class ozADMRegEntry {
public:
    ozADMRegEntry() = default;
    ozADMRegEntry(const ozADMRegEntry& other);
    ozADMRegEntry& operator=(const ozADMRegEntry& other);
    virtual ~ozADMRegEntry();

    // The root as a root number (0 HKEY_CLASSES_ROOT, 1 HKEY_CURRENT_USER, ...).
    virtual void Root(unsigned int root);
    virtual unsigned int Root() const;
    // The root as a predefined key handle, stored as it is.
    virtual void HKEYRoot(HKEY root);
    virtual void Key(const char* key);
    virtual const char* Key() const;
    virtual void Valuename(const char* valueName);
    virtual const char* Valuename() const;
    virtual const ozADMValue& Value() const;
    // The value for changing: drops the cached export text, as every setter does.
    virtual ozADMValue& Value();
    // The export text, built on first use and kept until the entry changes; owned by the
    // entry.
    virtual const char* ExportString() const;
    // The string is an expandable string.
    virtual void Expand(bool expand);
    virtual bool Expand() const;
    // The entry stands for deleting all values of the key rather than one value.
    virtual void ClearKey(bool clearKey);
    virtual bool ClearKey() const;

protected:
    void _ClearExportString() { m_exportString.reset(); }

private:
    HKEY m_root = HKEY_CLASSES_ROOT;
    std::unique_ptr<char[]> m_key;
    std::unique_ptr<char[]> m_valueName;
    ozADMValue m_value;
    bool m_expand = false;
    bool m_clearKey = false;
    mutable std::unique_ptr<char[]> m_exportString;
};
