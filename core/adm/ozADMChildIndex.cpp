#include "ozADMChildIndex.h"

#include <cstring>
#include <functional>
#include <string_view>

#include "ozADMNode.h"

namespace {

size_t HashOf(const char* name)
{
    return std::hash<std::string_view>{}(name);
}

}  // namespace

ozADMNode* ozADMChildIndex::FirstNamedOrNameless(const ozTreeNode& parent, const char* name)
{
    Refresh(parent);
    const Position* named = nullptr;
    if (name != nullptr && !m_slots.empty()) {
        const Slot& slot = SlotOf(name, HashOf(name));
        if (slot.position.node != nullptr)
            named = &slot.position;
    }
    if (m_firstNameless.node != nullptr &&
        (named == nullptr || m_firstNameless.ordinal < named->ordinal))
        return m_firstNameless.node;
    return named != nullptr ? named->node : nullptr;
}

ozTreeNode* ozADMChildIndex::LastChild(const ozTreeNode& parent)
{
    Refresh(parent);
    return m_last;
}

void ozADMChildIndex::Refresh(const ozTreeNode& parent)
{
    if (!m_built || m_parentGeneration != parent.Generation()) {
        m_slots.clear();
        m_named = 0;
        m_firstNameless = {nullptr, 0};
        m_last = nullptr;
        m_count = 0;
        m_built = true;
        m_parentGeneration = parent.Generation();
    }
    // While the generation holds, children only ever get appended after the last one known.
    ozTreeNode* next = m_last != nullptr ? m_last->Next() : parent.Down();
    for (; next != nullptr; next = next->Next())
        Take(static_cast<ozADMNode*>(next));
}

void ozADMChildIndex::Take(ozADMNode* child)
{
    Position position{child, m_count++};
    m_last = child;
    if (child->Name() == nullptr) {
        if (m_firstNameless.node == nullptr)
            m_firstNameless = position;
        return;
    }
    if (2 * (m_named + 1) > m_slots.size())
        Grow();
    size_t hash = HashOf(child->Name());
    Slot& slot = SlotOf(child->Name(), hash);
    if (slot.position.node == nullptr) {  // an earlier sibling of the name keeps its place
        slot = {hash, position};
        ++m_named;
    }
}

ozADMChildIndex::Slot& ozADMChildIndex::SlotOf(const char* name, size_t hash)
{
    size_t mask = m_slots.size() - 1;
    for (size_t at = hash & mask;; at = (at + 1) & mask) {
        Slot& slot = m_slots[at];
        if (slot.position.node == nullptr ||
            (slot.hash == hash && std::strcmp(slot.position.node->Name(), name) == 0))
            return slot;
    }
}

void ozADMChildIndex::Grow()
{
    std::vector<Slot> old(m_slots.size() < 8 ? 16 : 2 * m_slots.size(), Slot{0, {nullptr, 0}});
    old.swap(m_slots);
    size_t mask = m_slots.size() - 1;
    for (const Slot& slot : old) {
        if (slot.position.node == nullptr)
            continue;
        size_t at = slot.hash & mask;
        while (m_slots[at].position.node != nullptr)
            at = (at + 1) & mask;
        m_slots[at] = slot;
    }
}
