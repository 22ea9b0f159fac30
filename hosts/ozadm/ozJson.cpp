#include "ozJson.h"

#include <cstdio>

std::string ozJsonString(std::string_view text)
{
    std::string json = "\"";
    for (char c : text) {
        switch (c) {
            case '"':
                json += "\\\"";
                break;
            case '\\':
                json += "\\\\";
                break;
            case '\n':
                json += "\\n";
                break;
            case '\r':
                json += "\\r";
                break;
            case '\t':
                json += "\\t";
                break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    char escaped[8];
                    std::snprintf(escaped, sizeof escaped, "\\u%04x",
                                  static_cast<unsigned>(static_cast<unsigned char>(c)));
                    json += escaped;
                } else {
                    json += c;
                }
        }
    }
    return json + "\"";
}
