#include "ozUtf8.h"

#include <memory>

namespace {

constexpr char16_t kReplacement = 0xFFFD;

}  // namespace

std::u16string ozDecodeUtf8(std::string_view text)
{
    std::u16string out;
    out.reserve(text.size());
    size_t i = 0;
    while (i < text.size()) {
        unsigned char lead = static_cast<unsigned char>(text[i]);
        if (lead < 0x80) {
            out += static_cast<char16_t>(lead);
            ++i;
            continue;
        }
        int need = 0;
        char32_t code = 0;
        unsigned char low = 0x80, high = 0xBF;
        if (lead >= 0xC2 && lead <= 0xDF) {
            need = 1;
            code = lead & 0x1F;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            need = 2;
            code = lead & 0x0F;
            low = lead == 0xE0 ? 0xA0 : 0x80;
            high = lead == 0xED ? 0x9F : 0xBF;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            need = 3;
            code = lead & 0x07;
            low = lead == 0xF0 ? 0x90 : 0x80;
            high = lead == 0xF4 ? 0x8F : 0xBF;
        } else {
            out += kReplacement;
            ++i;
            continue;
        }
        size_t next = i + 1;
        int have = 0;
        bool broken = false;
        while (have < need && next < text.size()) {
            unsigned char byte = static_cast<unsigned char>(text[next]);
            if (byte < 0x80 || byte > 0xBF)
                break;
            ++next;
            if (have == 0 && (byte < low || byte > high)) {
                broken = true;
                break;
            }
            code = (code << 6) | (byte & 0x3F);
            ++have;
        }
        i = next;
        if (broken || have < need) {
            out += kReplacement;
        } else if (code >= 0x10000) {
            code -= 0x10000;
            out += static_cast<char16_t>(0xD800 + (code >> 10));
            out += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
        } else {
            out += static_cast<char16_t>(code);
        }
    }
    return out;
}

std::string ozEncodeUtf8(std::u16string_view text)
{
    // Written into room for the longest result (three bytes per unit; a surrogate pair, two
    // units, gives four), left uncleared, then copied out at its size.
    std::unique_ptr<char[]> room(new char[text.size() * 3 + 1]);
    auto* next = reinterpret_cast<unsigned char*>(room.get());
    const size_t size = text.size();
    for (size_t i = 0; i < size; ++i) {
        char32_t code = text[i];
        if (code < 0x80) {
            *next++ = static_cast<unsigned char>(code);
            continue;
        }
        if (code >= 0xD800 && code <= 0xDBFF && i + 1 < size && text[i + 1] >= 0xDC00 &&
            text[i + 1] <= 0xDFFF) {
            code = 0x10000 + ((code - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        } else if (code >= 0xD800 && code <= 0xDFFF) {
            code = kReplacement;
        }
        if (code < 0x800) {
            *next++ = static_cast<unsigned char>(0xC0 | (code >> 6));
        } else if (code < 0x10000) {
            *next++ = static_cast<unsigned char>(0xE0 | (code >> 12));
            *next++ = static_cast<unsigned char>(0x80 | ((code >> 6) & 0x3F));
        } else {
            *next++ = static_cast<unsigned char>(0xF0 | (code >> 18));
            *next++ = static_cast<unsigned char>(0x80 | ((code >> 12) & 0x3F));
            *next++ = static_cast<unsigned char>(0x80 | ((code >> 6) & 0x3F));
        }
        if (code >= 0x80)
            *next++ = static_cast<unsigned char>(0x80 | (code & 0x3F));
    }
    return std::string(room.get(), reinterpret_cast<char*>(next) - room.get());
}
