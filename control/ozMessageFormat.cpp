#include "ozMessageFormat.h"

std::string ozFormatMessage(const std::string& text, std::initializer_list<std::string> arguments)
{
    std::string formatted;
    auto next = arguments.begin();
    for (size_t pos = 0; pos < text.size(); ++pos) {
        if (text[pos] == '%' && pos + 1 < text.size()) {
            if (text[pos + 1] == 's') {
                if (next != arguments.end())
                    formatted += *next++;
                ++pos;
                continue;
            }
            if (text[pos + 1] == '%') {
                formatted += '%';
                ++pos;
                continue;
            }
        }
        formatted += text[pos];
    }
    return formatted;
}
