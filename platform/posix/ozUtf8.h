// UTF-8, the narrow encoding of the POSIX build, and UTF-16, the wide one.
#pragma once

#include <string>
#include <string_view>

// Decodes UTF-8 into UTF-16. Each malformed piece becomes one U+FFFD: a byte that cannot start
// a sequence, a lead byte whose second byte is a continuation byte outside the range that lead
// allows (the two together), or a sequence cut short (its lead and continuation bytes).
std::u16string ozDecodeUtf8(std::string_view text);
// Encodes UTF-16 as UTF-8; a lone surrogate becomes U+FFFD.
std::string ozEncodeUtf8(std::u16string_view text);
