// A registry key that has sub keys, found or created by path. The base of root keys (the
// top-level nodes of a registry tree) and of named sub keys.
#pragma once

#include <memory>

#include "ozRegItem.h"

class ozSubKey;
class ozTree;

enum tKEYTYPE : int {
    KeyRoot = 1,
    KeySub = 2,
};

enum tOPKEY : int {
    KeyOpInsert = 'I',       // default operation of a new key
    KeyOpEraseValues = 'E',  // all values of the key are to be erased
};

// Sub keys are the key's tree children, in order of creation. Names of keys compare without
// regard to case; the first match in child order wins.
//
// Lookups are indexed, so finding or creating N siblings costs O(N) overall. The index is
// kept up to date for keys created here; a key linked in or moved by other tree operations,
// or renamed, changes this key's generation and the index is rebuilt on the next lookup.
class ozRegKey : public ozRegItem {
public:
    // The longest path component a lookup accepts, terminator included.
    static constexpr int MaxNameLength = 1024;
    // Keys with more children than this search them through a name index.
    static constexpr int IndexThreshold = 16;

    ozRegKey();
    ~ozRegKey() override;

    virtual tKEYTYPE Type() const = 0;
    // A display state kept for the views; false at construction.
    virtual void IsOpen(bool open);
    virtual bool IsOpen() const;
    // Finds the key at `path` (components separated by backslashes) below this key, creating
    // every missing key along it as the last child of its parent, with root number `root`.
    // The tree's cursor is left on the last key created. Null when this key is in no tree
    // or a component is longer than MaxNameLength - 1 characters.
    virtual ozSubKey* FindSubKey(const char* path, unsigned int root);
    // The same search without creation; null when any component is missing.
    virtual ozSubKey* HasSubKey(const char* path);

    // The buffer the path splitter copies the current path component into, shared by all keys.
    static char m_vBuf[MaxNameLength];

protected:
    // Tells this key's parent that it was renamed, so that the parent's index rebuilds.
    void _KeyRenamed();
    // Up(), remembered while this key's generation is unchanged (ozTreeNode::Generation), so
    // that deep or wide trees are climbed in constant time per level.
    ozTreeNode* CachedUp();
    // The tree this key is in; null for a key in no tree.
    ozTree* Tree();

private:
    struct ChildIndex;

    // Copies the first component of path into m_vBuf and returns the backslash or the
    // terminating zero after it; null when the component does not fit.
    static const char* _CutName(const char* path);
    // The first child whose name matches m_vBuf, ignoring case; null if none, with
    // *lastChild set to the last child (null for a key without children).
    ozSubKey* FindChild(ozTreeNode** lastChild);
    ChildIndex& UpToDateIndex();
    // The child named m_vBuf; with `create`, a missing one is appended with root number root.
    ozSubKey* FindOrAddChild(unsigned int root, bool create);
    // Finds (and with `create` makes) the key at path below this key.
    ozSubKey* WalkPath(const char* path, unsigned int root, bool create);

    bool m_isOpen = false;
    std::unique_ptr<ChildIndex> m_childIndex;
    ozTreeNode* m_cachedParent = nullptr;
    unsigned long m_cachedParentGeneration = 0;
};
