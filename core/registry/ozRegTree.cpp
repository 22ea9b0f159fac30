#include "ozRegTree.h"

#include "ozRegExport.h"
#include "ozRootKey.h"
#include "ozSubKey.h"

ozRootKey* ozRegTree::FindRootKey(HKEY root)
{
    for (ozTreeNode* node = GetRoot(); node != nullptr; node = GetNext()) {
        auto* rootKey = static_cast<ozRootKey*>(node);
        if (rootKey->HKey() == root)
            return rootKey;
    }
    return nullptr;
}

ozSubKey* ozRegTree::FindKey(HKEY root, const char* path)
{
    if (path == nullptr)
        return nullptr;
    ozRootKey* rootKey = FindRootKey(root);
    if (rootKey == nullptr) {
        rootKey = new ozRootKey(root);
        // The walk left the cursor on the last root key, or on none in an empty tree.
        bool added = GetCurr() != nullptr ? AddAfter(rootKey) : AddBelow(rootKey);
        if (!added) {
            delete rootKey;
            return nullptr;
        }
    }
    return rootKey->FindSubKey(path, ozRootNumber(root));
}

ozSubKey* ozRegTree::HasKey(HKEY root, const char* path)
{
    ozRootKey* rootKey = FindRootKey(root);
    return rootKey != nullptr ? rootKey->HasSubKey(path) : nullptr;
}

bool ozRegTree::ResetSelected()
{
    Execute([](ozTreeNode* node) {
        auto* key = static_cast<ozRegKey*>(node);
        if (key->Type() == KeySub)
            static_cast<ozSubKey*>(key)->Selected(false);
        return true;
    });
    return true;
}

bool ozRegTree::Save(ozRegExport* exporter)
{
    return Execute(
        [](ozTreeNode* node, void* context) {
            auto* target = static_cast<ozRegExport*>(context);
            if (target == nullptr)
                return false;
            auto* key = static_cast<ozRegKey*>(node);
            return key->Type() != KeySub || target->ExportKey(static_cast<ozSubKey*>(key));
        },
        exporter);
}
