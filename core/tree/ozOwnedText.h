// Owned copies of zero-terminated texts: how the model's objects keep their names and strings
// while handing out `const char*`.
#pragma once

#include <cstring>
#include <memory>

// A heap copy of text, terminator included; null for null.
inline std::unique_ptr<char[]> ozCopyText(const char* text)
{
    if (text == nullptr)
        return nullptr;
    size_t size = std::strlen(text) + 1;
    auto copy = std::make_unique<char[]>(size);
    std::memcpy(copy.get(), text, size);
    return copy;
}
