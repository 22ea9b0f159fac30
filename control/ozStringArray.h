// A result that is either empty or an array of strings: what the control's policy queries
// return. The Windows layer turns it into an empty VARIANT or a VT_ARRAY | VT_BSTR array with
// lower bound 0.
#pragma once

#include <string>
#include <vector>

class ozStringArray {
public:
    // An empty result (no array at all, not an array without elements).
    ozStringArray() = default;
    explicit ozStringArray(std::vector<std::string> elements)
        : m_isArray(true), m_elements(std::move(elements))
    {
    }

    bool IsEmpty() const { return !m_isArray; }
    const std::vector<std::string>& Elements() const { return m_elements; }

private:
    bool m_isArray = false;
    std::vector<std::string> m_elements;
};
