#include "ozRegTree.h"

#include <string>
#include <vector>

#include "ozRegExport.h"
#include "ozRegValue.h"
#include "ozRootKey.h"
#include "ozSubKey.h"
#include "platform/ozAsciiCase.h"

namespace {

const char* const Reading = "ozRegTree::AddFromRegistry()";

// A name as a message shows it: a zero character, which no key or value name of the model can
// hold, as <NUL>.
std::string Shown(const std::string& name)
{
    std::string shown;
    for (char c : name)
        shown += c == '\0' ? std::string("<NUL>") : std::string(1, c);
    return shown;
}

// Refuses a key whose path the model cannot hold whole: cut, it would merge with another key.
void CheckKeyPath(const std::string& path)
{
    if (path.size() >= static_cast<size_t>(ozSubKey::KeyPathCapacity))
        throw CRegistryKey::Exception(
            Reading, ERROR_FILENAME_EXCED_RANGE, path,
            "the key path has " + std::to_string(path.size()) + " bytes; key paths of at most " +
                std::to_string(ozSubKey::KeyPathCapacity - 1) + " are held");
}

// Refuses a name holding a zero character: the model's names end there, so it would lose
// the rest and could merge with a sibling.
void CheckName(const std::string& keyPath, const char* what, const std::string& name)
{
    if (name.find('\0') != std::string::npos)
        throw CRegistryKey::Exception(Reading, ERROR_INVALID_NAME, keyPath,
                                      std::string("the ") + what + " name \"" + Shown(name) +
                                          "\" holds a zero character, which names cannot hold");
}

}  // namespace

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
    try {
        CheckKeyPath(key);
        CRegistryKey opened(root, key, KEY_READ, machine);
        ozSubKey* modelKey = FindKey(root, key);
        if (modelKey == nullptr)
            return false;
        if (value == nullptr) {
            modelKey->Save(true);
            return recursive ? AddFromRegistry(opened, root, key) : true;
        }
        for (auto it = opened.BeginValueIteration(); it != opened.EndValueIteration(); ++it) {
            if (ozAsciiSameIgnoringCase(it->Name().c_str(), value)) {
                CheckName(key, "value", it->Name());
                CRegistryKey::Value found = *it;
                return AddValueFromReg(modelKey, found);
            }
        }
        return true;
    } catch (CRegistryKey::Exception& failure) {
        failure.NameKey(key);
        throw;
    }
}

bool ozRegTree::AddFromRegistry(CRegistryKey& key, HKEY root, const char* path)
{
    // Depth-first with a stack of open keys instead of a call per level, so that a deep or
    // damaged registry cannot exhaust the call stack. Each key's sub keys are read, each with
    // all of its own, before the key's values; the enumeration of a key moves on only after
    // the sub key it stands on has been read.
    struct Level {
        CRegistryKey key;
        std::string path;
        ozSubKey* modelKey;
        CRegistryKey::SubkeyIterator subKey;
        bool subKeyRead;
    };
    std::vector<Level> levels;
    auto enter = [&](const CRegistryKey& opened, std::string keyPath) {
        ozSubKey* modelKey = FindKey(root, keyPath.c_str());
        if (modelKey == nullptr)
            return false;
        modelKey->Save(true);
        levels.push_back(Level{opened, std::move(keyPath), modelKey, {}, false});
        levels.back().subKey = levels.back().key.BeginSubkeyIteration();
        return true;
    };

    std::string reading = path;
    try {
        CheckKeyPath(reading);
        if (!enter(key, path))
            return false;
        while (!levels.empty()) {
            Level& level = levels.back();
            reading = level.path;
            if (level.subKeyRead) {
                ++level.subKey;
                level.subKeyRead = false;
            }
            if (level.subKey != level.key.EndSubkeyIteration()) {
                CheckName(level.path, "sub key", level.subKey.Name());
                std::string childPath = level.path + "\\" + level.subKey.Name();
                CheckKeyPath(childPath);
                reading = childPath;
                CRegistryKey child = level.subKey.OpenKey(KEY_READ);
                level.subKeyRead = true;
                if (!enter(child, std::move(childPath)))
                    return false;
                continue;
            }
            for (auto it = level.key.BeginValueIteration(); it != level.key.EndValueIteration();
                 ++it) {
                CheckName(level.path, "value", it->Name());
                CRegistryKey::Value value = *it;
                if (!AddValueFromReg(level.modelKey, value))
                    return false;
            }
            levels.pop_back();
        }
        return true;
    } catch (CRegistryKey::Exception& failure) {
        failure.NameKey(reading);
        throw;
    }
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
    // A number of four bytes goes through its setter; everything else, strings included, is
    // kept as stored: a string's zero characters, or a number of another size, are not lost.
    if (value.Type() == REG_DWORD && value.Length() == 4)
        return modelValue->SetDWORD(value.AsDWORD());
    return modelValue->SetData(value.Type(), value.Length(), value.Data());
}
