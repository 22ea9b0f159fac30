// The importer's operations on the control's trees. They live with the policy model because
// the code object reaches the registry trees through its policy tree.
#include "core/registry/ozRegImport.h"

#include <new>

#include "core/registry/ozRegTree.h"
#include "core/registry/ozSubKey.h"
#include "tTreeCodeHandle.h"

ozRegImport::~ozRegImport() = default;

tTreeCodeHandle* ozRegImport::CodeHandle()
{
    return m_code;
}

void ozRegImport::CodeHandle(tTreeCodeHandle* code)
{
    m_code = code;
}

ozSubKey* ozRegImport::_CreateKey(unsigned int root, const char* name)
{
    ozRegTree* tree = ozRegTreeOfRoot(m_code, root);
    if (tree == nullptr || name == nullptr)
        return nullptr;
    return tree->FindKey(ozRootHandle(root), name);
}

ozRegValue* ozRegImport::_CreateValue(unsigned int root, const char* key, const char* name,
                                      tREGITEMTYPE type)
{
    if (m_code == nullptr || m_code->tree == nullptr || key == nullptr || name == nullptr)
        return nullptr;
    ozRegTree* tree = ozRegTreeOfRoot(m_code, root);
    if (type == RitM) {
        // Deliberately in the user tree, below the machine's root key.
        tree = &m_code->tree->UsrTree();
        if (root == 1)
            root = 2;
    }
    ozSubKey* subKey = tree->FindKey(ozRootHandle(root), key);
    if (subKey == nullptr)
        return nullptr;
    ozRegValue* value = subKey->FindValue(name);
    if (value != nullptr)
        value->Root(root);
    return value;
}

unsigned char* ozRegImport::_CreateData(unsigned long size)
{
    if (m_code == nullptr)
        return nullptr;
    return new (std::nothrow) unsigned char[size];
}
