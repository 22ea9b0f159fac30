#include "ozRegTree.h"

#include <string>

#include "ozFoldedName.h"
#include "ozRegExport.h"
#include "ozRegValue.h"
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

bool ozRegTree::AddFromRegistry(HKEY root, const char* key, const char* value, bool recursive,
                                const char* machine)
{
    if (key == nullptr)
        return false;
    CRegistryKey opened(root, key, KEY_READ, machine);
    ozSubKey* modelKey = FindKey(root, key);
    if (modelKey == nullptr)
        return false;
    if (value == nullptr) {
        modelKey->Save(true);
        return recursive ? AddFromRegistry(opened, root, key) : true;
    }
    for (auto it = opened.BeginValueIteration(); it != opened.EndValueIteration(); ++it) {
        if (ozSameName(it->Name().c_str(), value)) {
            CRegistryKey::Value found = *it;
            return AddValueFromReg(modelKey, found);
        }
    }
    return true;
}

bool ozRegTree::AddFromRegistry(CRegistryKey& key, HKEY root, const char* path)
{
    ozSubKey* modelKey = FindKey(root, path);
    if (modelKey == nullptr)
        return false;
    modelKey->Save(true);

    bool result = true;
    for (auto it = key.BeginSubkeyIteration(); result && it != key.EndSubkeyIteration(); ++it) {
        // Child paths are cut to the length of the path buffer the model works with.
        std::string childPath = std::string(path) + "\\" + it.Name();
        if (childPath.size() >= static_cast<size_t>(ozSubKey::KeyPathCapacity))
            childPath.resize(ozSubKey::KeyPathCapacity - 1);
        CRegistryKey child = it.OpenKey(KEY_READ);
        result = AddFromRegistry(child, root, childPath.c_str());
    }
    for (auto it = key.BeginValueIteration(); result && it != key.EndValueIteration(); ++it) {
        CRegistryKey::Value value = *it;
        result = AddValueFromReg(modelKey, value);
    }
    return result;
}

bool ozRegTree::AddValueFromReg(ozSubKey* key, CRegistryKey::Value& value)
{
    if (key == nullptr)
        return false;
    ozRegValue* modelValue = key->FindValue(value.Name().c_str());
    if (modelValue == nullptr)
        return false;
    modelValue->Op(OpInsert);
    modelValue->RIT(RitR);
    switch (value.Type()) {
        case REG_SZ:
            return modelValue->SetString(value.AsString().c_str());
        case REG_EXPAND_SZ:
            return modelValue->SetExpandString(value.AsString().c_str());
        case REG_DWORD:
            return modelValue->SetDWORD(value.AsDWORD());
        default:
            return modelValue->SetData(value.Type(), value.Length(), value.Data());
    }
}
