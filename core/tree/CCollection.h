// An insertion-ordered collection of element pointers, each optionally filed under a name,
// that can own its elements. Used for the values of a registry key and for every list of
// the policy model.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>

// Two parts: a sequence of item records in insertion order (capacity 100, grown 100 slots at
// a time) and a name index of 101 buckets, each a binary search tree ordered by byte-wise
// comparison. Names compare exactly (case-sensitively).
//
// Ownership: an owning collection destroys its elements (a collection of char holds strings
// allocated with new[] and destroys them with delete[]), from the moment they are passed to
// Add, whether Add succeeds or not; a collection that does not own its elements never
// destroys one. A named element is destroyed by its index entry, an element without a name by
// its sequence item. Collections are not copied.
template <class T>
class CCollection {
public:
    static constexpr unsigned BucketCount = 101;
    static constexpr int InitialCapacity = 100;
    static constexpr int GrowthStep = 100;

    explicit CCollection(bool ownsElements = true) : m_ownsElements(ownsElements) {}
    CCollection(const CCollection&) = delete;
    CCollection& operator=(const CCollection&) = delete;
    ~CCollection() { RemoveAll(); }

    bool OwnsElements() const { return m_ownsElements; }

    // Appends element to the sequence; with a name it is also filed in the name index.
    // Refused (false) for a null element, for a name already present and when memory runs
    // out: then nothing is added, and an owning collection destroys the element passed in.
    bool Add(T* element, const char* name = nullptr)
    {
        if (element == nullptr)
            return false;
        if (name != nullptr && !AddToIndex(name, element))
            return Refuse(element);
        if (!AppendItem(element, name)) {
            if (name != nullptr)
                RemoveFromIndex(name, /*destroyElement=*/false);
            return Refuse(element);
        }
        if (name != nullptr)
            RememberLastName(name);
        return true;
    }

    // The element filed under name (exact comparison), or null.
    T* Find(const char* name) const
    {
        if (name == nullptr || m_buckets == nullptr)
            return nullptr;
        const IndexEntry* entry = m_buckets[Hash(name)];
        while (entry != nullptr) {
            int order = std::strcmp(name, entry->name);
            if (order == 0)
                return entry->element;
            entry = order < 0 ? entry->left : entry->right;
        }
        return nullptr;
    }

    int Count() const { return m_count; }
    // Number of item slots the sequence has room for.
    int Capacity() const { return m_capacity; }
    // The element at pos (insertion order), null outside 0..Count()-1.
    T* At(int pos) const { return InRange(pos) ? m_items[pos].element : nullptr; }
    // The name the element at pos was added with; null for an unnamed element or a bad pos.
    const char* NameAt(int pos) const { return InRange(pos) ? m_items[pos].name : nullptr; }
    // Position of element in the sequence (by identity), or -1.
    int IndexOf(const T* element) const
    {
        for (int pos = 0; pos < m_count; ++pos)
            if (m_items[pos].element == element)
                return pos;
        return -1;
    }
    // The name of the element added last with a name (null when forgotten or none).
    const char* LastAddedName() const { return m_lastName; }

    // Removes the item at pos; an owning collection destroys its element. False for a bad
    // position. A named item whose index entry has gone missing is left in place (true).
    bool RemoveAt(int pos)
    {
        if (!InRange(pos))
            return false;
        Item& item = m_items[pos];
        if (item.name != nullptr) {
            if (m_lastName != nullptr && std::strcmp(m_lastName, item.name) == 0)
                ForgetLastName();
            if (!RemoveFromIndex(item.name, /*destroyElement=*/true))
                return true;
        }
        DestroyItem(item);
        std::memmove(m_items + pos, m_items + pos + 1, sizeof(Item) * (m_count - pos - 1));
        --m_count;
        return true;
    }

    // Removes every element: first the sequence items (destroying owned unnamed elements),
    // then the index entries (destroying owned named elements).
    void RemoveAll()
    {
        for (int pos = 0; pos < m_count; ++pos)
            DestroyItem(m_items[pos]);
        std::free(m_items);
        m_items = nullptr;
        m_count = 0;
        m_capacity = 0;
        if (m_buckets != nullptr) {
            for (unsigned bucket = 0; bucket < BucketCount; ++bucket)
                DestroySearchTree(m_buckets[bucket]);
            std::free(m_buckets);
            m_buckets = nullptr;
        }
        ForgetLastName();
    }

    // djb2 over the bytes read as signed chars, modulo the bucket count.
    static unsigned Hash(const char* name)
    {
        std::uint32_t hash = 5381;
        for (const signed char* c = reinterpret_cast<const signed char*>(name); *c != 0; ++c)
            hash = hash * 33u + static_cast<std::uint32_t>(*c);
        return hash % BucketCount;
    }

private:
    struct Item {
        T* element;
        char* name;  // owned copy, null for an unnamed element
        bool ownsElement;
    };
    struct IndexEntry {
        char* name;  // owned copy
        bool ownsElement;
        T* element;
        IndexEntry* left;
        IndexEntry* right;
    };

    bool InRange(int pos) const { return pos >= 0 && pos < m_count; }

    static void DestroyElement(T* element)
    {
        if constexpr (std::is_same_v<T, char>)
            delete[] element;
        else
            delete element;
    }

    // An element Add refused: an owning collection has taken it all the same.
    bool Refuse(T* element)
    {
        if (m_ownsElements)
            DestroyElement(element);
        return false;
    }

    static char* CopyName(const char* name)
    {
        size_t size = std::strlen(name) + 1;
        char* copy = static_cast<char*>(std::malloc(size));
        if (copy != nullptr)
            std::memcpy(copy, name, size);
        return copy;
    }

    bool AppendItem(T* element, const char* name)
    {
        if (m_count == m_capacity) {
            int capacity = m_capacity == 0 ? InitialCapacity : m_capacity + GrowthStep;
            void* grown = std::realloc(m_items, sizeof(Item) * capacity);
            if (grown == nullptr)
                return false;
            m_items = static_cast<Item*>(grown);
            m_capacity = capacity;
        }
        char* nameCopy = nullptr;
        if (name != nullptr && (nameCopy = CopyName(name)) == nullptr)
            return false;
        m_items[m_count] = Item{element, nameCopy, m_ownsElements};
        ++m_count;
        return true;
    }

    void DestroyItem(Item& item)
    {
        if (item.name == nullptr && item.ownsElement)
            DestroyElement(item.element);
        std::free(item.name);
    }

    bool AddToIndex(const char* name, T* element)
    {
        // The buckets are allocated with the first name, so that collections that are only
        // used as sequences (the values of every registry key) stay small.
        if (m_buckets == nullptr)
            m_buckets = static_cast<IndexEntry**>(std::calloc(BucketCount, sizeof(IndexEntry*)));
        if (m_buckets == nullptr)
            return false;
        IndexEntry** link = &m_buckets[Hash(name)];
        while (*link != nullptr) {
            int order = std::strcmp(name, (*link)->name);
            if (order == 0)
                return false;
            link = order < 0 ? &(*link)->left : &(*link)->right;
        }
        char* nameCopy = CopyName(name);
        IndexEntry* entry = nameCopy != nullptr ? new (std::nothrow) IndexEntry : nullptr;
        if (entry == nullptr) {
            std::free(nameCopy);
            return false;
        }
        *entry = IndexEntry{nameCopy, m_ownsElements, element, nullptr, nullptr};
        *link = entry;
        return true;
    }

    // Unlinks the entry for name from its bucket's search tree and frees it, destroying the
    // element when asked and the entry owns it. False when there is no such entry.
    bool RemoveFromIndex(const char* name, bool destroyElement)
    {
        if (m_buckets == nullptr)
            return false;
        IndexEntry** link = &m_buckets[Hash(name)];
        while (*link != nullptr && std::strcmp(name, (*link)->name) != 0)
            link = std::strcmp(name, (*link)->name) < 0 ? &(*link)->left : &(*link)->right;
        IndexEntry* entry = *link;
        if (entry == nullptr)
            return false;
        if (entry->left == nullptr || entry->right == nullptr) {
            *link = entry->left != nullptr ? entry->left : entry->right;
        } else {
            // Replace by the smallest entry of the right subtree.
            IndexEntry** successorLink = &entry->right;
            while ((*successorLink)->left != nullptr)
                successorLink = &(*successorLink)->left;
            IndexEntry* successor = *successorLink;
            *successorLink = successor->right;
            successor->left = entry->left;
            successor->right = entry->right;
            *link = successor;
        }
        DestroyEntry(entry, destroyElement);
        return true;
    }

    static void DestroyEntry(IndexEntry* entry, bool destroyElement)
    {
        if (destroyElement && entry->ownsElement)
            DestroyElement(entry->element);
        std::free(entry->name);
        delete entry;
    }

    // Iterative, so that a degenerate tree of many entries cannot exhaust the stack.
    static void DestroySearchTree(IndexEntry* root)
    {
        while (root != nullptr) {
            if (root->left != nullptr) {
                IndexEntry* left = root->left;
                root->left = left->right;
                left->right = root;
                root = left;
            } else {
                IndexEntry* right = root->right;
                DestroyEntry(root, /*destroyElement=*/true);
                root = right;
            }
        }
    }

    void RememberLastName(const char* name)
    {
        ForgetLastName();
        m_lastName = CopyName(name);
    }
    void ForgetLastName()
    {
        std::free(m_lastName);
        m_lastName = nullptr;
    }

    bool m_ownsElements;
    IndexEntry** m_buckets = nullptr;  // BucketCount search trees, allocated on first use
    Item* m_items = nullptr;
    int m_count = 0;
    int m_capacity = 0;
    char* m_lastName = nullptr;
};
