#include "ozStringTable.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <new>
#include <string_view>

#include "platform/ozAsciiCase.h"

namespace {

size_t HashOf(const char* name)
{
    return std::hash<std::string_view>{}(name);
}

}  // namespace

bool ozStringTable::Insert(const char* name, const char* value)
{
    if (name == nullptr || value == nullptr)
        return false;
    Reserve(m_entries.size() + 1);
    size_t hash = HashOf(name);
    Slot& slot = m_slots[SlotOf(name, hash)];
    if (slot.entry != 0)
        return false;
    m_entries.push_back(Entry{name, value});
    slot = Slot{hash, m_entries.size()};
    return true;
}

const char* ozStringTable::Find(const char* name) const
{
    if (name == nullptr || m_slots.empty())
        return nullptr;
    const Slot& slot = m_slots[SlotOf(name, HashOf(name))];
    return slot.entry != 0 ? m_entries[slot.entry - 1].value.c_str() : nullptr;
}

size_t ozStringTable::SlotOf(const char* name, size_t hash) const
{
    size_t mask = m_slots.size() - 1;
    for (size_t at = hash & mask;; at = (at + 1) & mask) {
        const Slot& slot = m_slots[at];
        if (slot.entry == 0 || (slot.hash == hash && m_entries[slot.entry - 1].name == name))
            return at;
    }
}

void ozStringTable::Reserve(size_t count)
{
    if (2 * count <= m_slots.size())
        return;
    size_t size = 16;
    while (size < 2 * count)
        size *= 2;
    m_entries.reserve(count);
    std::vector<Slot> slots(size, Slot{0, 0});
    size_t mask = size - 1;
    for (const Slot& slot : m_slots) {
        if (slot.entry == 0)
            continue;
        size_t at = slot.hash & mask;
        while (slots[at].entry != 0)
            at = (at + 1) & mask;
        slots[at] = slot;
    }
    m_slots.swap(slots);
}

void ozStringTable::Truncate(size_t count)
{
    if (count >= m_entries.size())
        return;
    m_entries.resize(count);
    // The slots of the forgotten entries would break the probe chains if merely emptied, so
    // the entries that stay are filed again.
    std::fill(m_slots.begin(), m_slots.end(), Slot{0, 0});
    size_t mask = m_slots.size() - 1;
    for (size_t entry = 0; entry < m_entries.size(); ++entry) {
        size_t hash = HashOf(m_entries[entry].name.c_str());
        size_t at = hash & mask;
        while (m_slots[at].entry != 0)
            at = (at + 1) & mask;
        m_slots[at] = Slot{hash, entry + 1};
    }
}

std::string ozStringTable::UnquotedValue(std::string value)
{
    if (value.empty() || value[0] != '"')
        return value;
    value.erase(0, 1);
    size_t lastQuote = value.rfind('"');
    if (lastQuote != std::string::npos && lastQuote > 0)
        value.resize(lastQuote);
    return value;
}

bool ozStringTable::AddSection(const char* lines)
{
    if (lines == nullptr)
        return true;
    try {
        // Room for every line at once: growing the table while filing it would move each
        // entry again at every step.
        size_t lineCount = 0;
        for (const char* line = lines; *line != '\0'; line += std::strlen(line) + 1)
            ++lineCount;
        Reserve(m_entries.size() + lineCount);
        for (const char* line = lines; *line != '\0'; line += std::strlen(line) + 1) {
            const char* equals = std::strchr(line, '=');
            std::string name = ozAsciiUpperCased(equals != nullptr ? std::string_view(line, equals)
                                                                   : std::string_view(line));
            std::string value = equals != nullptr ? std::string(equals + 1) : std::string();
            if (!value.empty() && value.back() == '\\') {
                value.pop_back();
                const char* next = line + std::strlen(line) + 1;
                if (*next != '\0') {
                    value += next;
                    line = next;  // the continuation line is consumed
                }
            }
            Insert(name.c_str(), UnquotedValue(std::move(value)).c_str());
        }
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}
