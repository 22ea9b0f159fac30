#include "ozSubKey.h"

#include <cstring>
#include <unordered_map>

#include "core/tree/ozOwnedText.h"
#include "ozRegValue.h"
#include "ozVariableMarkers.h"
#include "platform/ozAsciiCase.h"

// The values by folded name (the first in insertion order for each name). Values are added
// and removed only through this key; a removal or a rename makes the index rebuild.
struct ozSubKey::ValueIndex {
    std::unordered_map<std::string, ozRegValue*> byName;
    int indexedCount = 0;
};

ozSubKey::ozSubKey() = default;

ozSubKey::~ozSubKey()
{
    m_name.reset();
    m_valueIndex.reset();
    m_values.RemoveAll();
    while (Down() != nullptr)
        delete Down();
}

ozSubKey* ozSubKey::FindSubKey(const char* path, unsigned int root)
{
    ozSubKey* found = ozRegKey::FindSubKey(path, root);
    if (found != nullptr && WVar())
        found->WVar(true);
    return found;
}

void ozSubKey::Name(const char* name)
{
    m_name = ozCopyText(name);
    if (Prev() != nullptr || ParentLink() != nullptr)
        _KeyRenamed();
    _RefreshVariablesFlag(false, false);
}

const char* ozSubKey::Name() const
{
    return m_name.get();
}

void ozSubKey::Op(tOPKEY op)
{
    m_op = op;
}

tOPKEY ozSubKey::Op() const
{
    return m_op;
}

void ozSubKey::Root(unsigned int root)
{
    m_root = root;
}

unsigned int ozSubKey::Root() const
{
    return m_root;
}

void ozSubKey::WVar(bool holdsVariable)
{
    m_holdsVariable = holdsVariable;
}

bool ozSubKey::WVar() const
{
    return m_holdsVariable;
}

void ozSubKey::Save(bool save)
{
    m_save = save;
}

bool ozSubKey::Save() const
{
    return m_save;
}

void ozSubKey::ADM(bool belongsToTemplate)
{
    m_adm = belongsToTemplate;
}

bool ozSubKey::ADM() const
{
    return m_adm;
}

void ozSubKey::Selected(bool selected)
{
    m_selected = selected;
}

bool ozSubKey::Selected() const
{
    return m_selected;
}

void ozSubKey::LineNumber(unsigned long line)
{
    m_lineNumber = line;
}

unsigned long ozSubKey::LineNumber() const
{
    return m_lineNumber;
}

bool ozSubKey::SaveADM(FILE* file)
{
    if (file == nullptr)
        return false;
    char path[KeyPathCapacity];
    if (!GetKeyPath(path))
        return false;
    return std::fprintf(file, "\"%s\"", path) >= 0;
}

bool ozSubKey::AppendKeyPath(std::string& path)
{
    ozTreeNode* parent = CachedUp();
    if (auto* parentKey = dynamic_cast<ozSubKey*>(parent); parentKey != nullptr) {
        if (!parentKey->AppendKeyPath(path))
            return false;
    }
    if (m_name == nullptr)
        return true;
    if (!path.empty())
        path.push_back('\\');
    path.append(m_name.get());
    return path.size() < static_cast<size_t>(KeyPathCapacity);
}

bool ozSubKey::GetKeyPath(char* buf)
{
    std::string path;
    if (!AppendKeyPath(path)) {
        buf[0] = '\0';
        return false;
    }
    std::memcpy(buf, path.c_str(), path.size() + 1);
    return true;
}

std::string ozSubKey::KeyPath()
{
    std::string path;
    if (!AppendKeyPath(path))
        path.clear();
    return path;
}

ozSubKey::ValueIndex& ozSubKey::UpToDateValueIndex()
{
    if (m_valueIndex == nullptr)
        m_valueIndex = std::make_unique<ValueIndex>();
    ValueIndex& index = *m_valueIndex;
    for (; index.indexedCount < m_values.Count(); ++index.indexedCount) {
        ozRegValue* value = m_values.At(index.indexedCount);
        if (value->Name() != nullptr)
            index.byName.emplace(ozAsciiLowerCased(value->Name()), value);
    }
    return index;
}

void ozSubKey::_ValueRenamed()
{
    m_valueIndex.reset();
}

ozRegValue* ozSubKey::HasValue(const char* name)
{
    if (name == nullptr)
        return nullptr;
    if (m_valueIndex == nullptr && m_values.Count() <= IndexThreshold) {
        // A few values are searched directly; the index pays off only beyond that.
        for (int position = 0; position < m_values.Count(); ++position) {
            if (ozAsciiSameIgnoringCase(m_values.At(position)->Name(), name))
                return m_values.At(position);
        }
        return nullptr;
    }
    ValueIndex& index = UpToDateValueIndex();
    auto found = index.byName.find(ozAsciiLowerCased(name));
    return found != index.byName.end() ? found->second : nullptr;
}

ozRegValue* ozSubKey::FindValue(const char* name)
{
    if (name == nullptr)
        return nullptr;
    if (ozRegValue* existing = HasValue(name))
        return existing;
    auto* value = new ozRegValue;
    value->Root(Root());
    value->Name(name);
    value->SubKey(this);
    return m_values.Add(value) ? value : nullptr;
}

bool ozSubKey::RemoveValue(ozRegValue* v)
{
    int position = m_values.IndexOf(v);
    if (position < 0)
        return false;
    m_valueIndex.reset();
    return m_values.RemoveAt(position);
}

const CCollection<ozRegValue>& ozSubKey::Values() const
{
    return m_values;
}

bool ozSubKey::_RefreshVariablesFlag(bool fromParent, bool parentHasVariables)
{
    if (!ozVariableMarkers::AreSet())
        return true;
    m_holdsVariable = false;
    if (!fromParent)
        m_holdsVariable = ozRegValue::HasVariables(KeyPath().c_str());
    else if (!parentHasVariables)
        m_holdsVariable = ozRegValue::HasVariables(m_name.get());
    else
        m_holdsVariable = true;

    for (int position = 0; position < m_values.Count(); ++position)
        m_values.At(position)->RefreshVariablesFlag(false, m_holdsVariable);
    for (ozTreeNode* child = Down(); child != nullptr; child = child->Next()) {
        if (static_cast<ozRegKey*>(child)->Type() == KeySub)
            static_cast<ozSubKey*>(child)->_RefreshVariablesFlag(true, m_holdsVariable);
    }
    return true;
}
