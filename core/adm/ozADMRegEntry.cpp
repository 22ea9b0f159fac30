#include "ozADMRegEntry.h"

#include <cstdio>
#include <cstring>

#include "core/registry/ozRegValue.h"
#include "core/tree/ozOwnedText.h"

namespace {

// The short name the export text gives a root; only the three roots policies are written
// under have one.
const char* RootPrefix(HKEY root)
{
    if (root == HKEY_CLASSES_ROOT)
        return "HKCR\\";
    if (root == HKEY_CURRENT_USER)
        return "HKCU\\";
    if (root == HKEY_LOCAL_MACHINE)
        return "HKLM\\";
    return "";
}

}  // namespace

ozADMRegEntry::ozADMRegEntry(const ozADMRegEntry& other)
    : m_root(other.m_root),
      m_key(ozCopyText(other.m_key.get())),
      m_valueName(ozCopyText(other.m_valueName.get())),
      m_value(other.m_value),
      m_expand(other.m_expand),
      m_clearKey(other.m_clearKey)
{
}

ozADMRegEntry& ozADMRegEntry::operator=(const ozADMRegEntry& other)
{
    if (this == &other)
        return *this;
    _ClearExportString();
    m_root = other.m_root;
    m_key = ozCopyText(other.m_key.get());
    m_valueName = ozCopyText(other.m_valueName.get());
    m_value = other.m_value;
    m_expand = other.m_expand;
    m_clearKey = other.m_clearKey;
    return *this;
}

ozADMRegEntry::~ozADMRegEntry() = default;

void ozADMRegEntry::Root(unsigned int root)
{
    _ClearExportString();
    m_root = ozRootHandle(root);
}

unsigned int ozADMRegEntry::Root() const
{
    return ozRootNumber(m_root);
}

void ozADMRegEntry::HKEYRoot(HKEY root)
{
    _ClearExportString();
    m_root = root;
}

void ozADMRegEntry::Key(const char* key)
{
    _ClearExportString();
    m_key = ozCopyText(key);
}

const char* ozADMRegEntry::Key() const
{
    return m_key.get();
}

void ozADMRegEntry::Valuename(const char* valueName)
{
    _ClearExportString();
    m_valueName = ozCopyText(valueName);
}

const char* ozADMRegEntry::Valuename() const
{
    return m_valueName.get();
}

const ozADMValue& ozADMRegEntry::Value() const
{
    return m_value;
}

ozADMValue& ozADMRegEntry::Value()
{
    // The caller may change the value through the reference, so the text is built anew.
    _ClearExportString();
    return m_value;
}

const char* ozADMRegEntry::ExportString() const
{
    if (m_exportString != nullptr)
        return m_exportString.get();

    std::string text = "\"";
    text += RootPrefix(m_root);
    if (m_key != nullptr)
        text += m_key.get();
    text += "\",\"";
    if (m_clearKey) {
        text += "**DelVals";
    } else {
        if (m_value.Type() == ozADMValue::ValueDelete)
            text += "**Del.";
        if (m_valueName != nullptr)
            text += m_valueName.get();
        text += "\",\"";
        // A deletion or an empty value still names a string type.
        unsigned int kind = m_value.Type();
        if (kind == ozADMValue::ValueNumeric)
            text += "REG_DWORD";
        else if (kind == ozADMValue::ValueQword)
            text += "REG_QWORD";
        else if (kind == ozADMValue::ValueMultiString)
            text += "REG_MULTI_SZ";
        else
            text += m_expand ? "REG_EXPAND_SZ" : "REG_SZ";
        text += "\",\"";
        if (kind == ozADMValue::ValueNumeric || kind == ozADMValue::ValueQword) {
            text += std::to_string(m_value.Qword());
        } else if (kind == ozADMValue::ValueString) {
            const char* data = m_value;
            if (data != nullptr)
                text += data;
        } else if (kind == ozADMValue::ValueMultiString) {
            // The registry's text form: every string ended by "~".
            ozRegValue written;
            m_value.SaveToRegistry(written);
            text += written.FormattedValue();
        }
    }
    text += "\"";

    m_exportString = ozCopyText(text.c_str());
    return m_exportString.get();
}

void ozADMRegEntry::Expand(bool expand)
{
    _ClearExportString();
    m_expand = expand;
}

bool ozADMRegEntry::Expand() const
{
    return m_expand;
}

void ozADMRegEntry::ClearKey(bool clearKey)
{
    _ClearExportString();
    m_clearKey = clearKey;
}

bool ozADMRegEntry::ClearKey() const
{
    return m_clearKey;
}
