#include "ozParameterText.h"

#include <cerrno>
#include <cstdlib>

#include "platform/ozAsciiCase.h"

bool ozReadBool(const std::string& text, bool& value)
{
    if (ozAsciiSameIgnoringCase(text, "TRUE")) {
        value = true;
        return true;
    }
    if (ozAsciiSameIgnoringCase(text, "FALSE")) {
        value = false;
        return true;
    }
    long long number = 0;
    if (!ozReadInteger(text, -2147483648LL, 4294967295LL, number))
        return false;
    value = number != 0;
    return true;
}

namespace {

// The digits from pos on, decimal or hexadecimal after "0x", as an unsigned number: false for
// no digits, anything else after them, or more than 64 bits.
bool ReadMagnitude(const std::string& text, std::size_t pos, unsigned long long& magnitude)
{
    int base = 10;
    if (text.size() > pos + 1 && text[pos] == '0' &&
        (text[pos + 1] == 'x' || text[pos + 1] == 'X')) {
        base = 16;
        pos += 2;
    }
    // strtoull would take blanks and a second sign; only digits may follow here.
    if (pos >= text.size())
        return false;
    for (std::size_t i = pos; i < text.size(); ++i) {
        char c = text[i];
        bool digit = (c >= '0' && c <= '9') ||
                     (base == 16 && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')));
        if (!digit)
            return false;
    }
    errno = 0;
    magnitude = std::strtoull(text.c_str() + pos, nullptr, base);
    return errno != ERANGE;
}

}  // namespace

bool ozReadInteger(const std::string& text, long long min, long long max, long long& value)
{
    std::size_t pos = 0;
    bool negative = false;
    if (pos < text.size() && (text[pos] == '-' || text[pos] == '+'))
        negative = text[pos++] == '-';
    unsigned long long magnitude = 0;
    if (!ReadMagnitude(text, pos, magnitude) || magnitude > 9223372036854775807ULL)
        return false;
    long long number =
        negative ? -static_cast<long long>(magnitude) : static_cast<long long>(magnitude);
    if (number < min || number > max)
        return false;
    value = number;
    return true;
}

bool ozReadUnsigned(const std::string& text, std::uint64_t min, std::uint64_t max,
                    std::uint64_t& value)
{
    unsigned long long number = 0;
    if (!ReadMagnitude(text, 0, number) || number < min || number > max)
        return false;
    value = number;
    return true;
}
