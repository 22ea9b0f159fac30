#include "ozADMRoot.h"

#include <cstring>

#include "ozADMTree.h"

ozRegTree* ozADMRoot::RegistryTree() const
{
    ozADMTree* tree = ADMTree();
    if (tree == nullptr)
        return nullptr;
    switch (m_rootType) {
        case RootUser:
            return &tree->UsrTree();
        case RootMachine:
            return &tree->MacTree();
        default:
            return nullptr;
    }
}

HKEY ozADMRoot::RootKey() const
{
    switch (m_rootType) {
        case RootUser:
            return HKEY_CURRENT_USER;
        case RootMachine:
            return HKEY_LOCAL_MACHINE;
        default:
            return nullptr;
    }
}

const char* ozADMRoot::Path() const
{
    return Name() != nullptr ? Name() : "";
}

void ozADMRoot::RootType(const char* text)
{
    m_rootType = text != nullptr && std::strcmp(text, "USER") == 0 ? RootUser : RootMachine;
}

void ozADMRoot::RootType(unsigned long rootType)
{
    m_rootType = rootType;
}

unsigned long ozADMRoot::RootType() const
{
    return m_rootType;
}

bool ozADMRoot::SaveNode(FILE* file)
{
    ozADMTree* tree = ADMTree();
    if (tree == nullptr || file == nullptr)
        return false;
    tree->IndentInc();
    return std::fprintf(file, "CLASS %s\n", Path()) >= 0;
}

bool ozADMRoot::SaveNodeAfter(FILE* file)
{
    ozADMTree* tree = ADMTree();
    if (tree == nullptr || file == nullptr)
        return false;
    tree->IndentDec();
    return std::fputc('\n', file) != EOF;
}
