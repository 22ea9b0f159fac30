// What the Registry.pol tests share: files as bytes, records written by hand, and the two
// registry trees of a code object as comparable lines.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegExport.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "profiles/pol/ozPolFormat.h"
#include "tests/support/ozTestFiles.h"

const std::string PolLibrary = ozPlatformPath(OZ_POL_LIBRARY);

// UTF-16LE bytes of text, without terminator.
inline std::string Utf16(const std::u16string& text)
{
    return ozUtf16Bytes(text).substr(2);
}

// A file of the header and records.
inline std::string PolFile(const std::vector<ozPolRecord>& records)
{
    std::string bytes = ozPolHeader();
    for (const ozPolRecord& record : records)
        ozAppendPolRecord(bytes, record);
    return bytes;
}

// Every key of both trees in save order, one line per key and per value with everything a
// profile can carry: root, path, operation; name, item type, operation, type, data bytes.
class ozTreeLines final : public ozRegExport {
public:
    explicit ozTreeLines(tTreeCodeHandle& code)
    {
        code.tree->MacTree().Save(this);
        code.tree->UsrTree().Save(this);
    }
    bool BeginMachineProfile(const char*) override { return true; }
    bool BeginUserProfile(const char*) override { return true; }
    bool Flush() override { return true; }
    bool ExportKey(ozSubKey* key) override
    {
        lines.push_back(std::to_string(key->Root()) + ":" + key->KeyPath() + " " +
                        static_cast<char>(key->Op()));
        const CCollection<ozRegValue>& values = key->Values();
        for (int i = 0; i < values.Count(); ++i) {
            const ozRegValue& value = *values.At(i);
            std::string line = "  [" + std::string(value.Name()) + "] " +
                               static_cast<char>(value.RIT()) + static_cast<char>(value.Op()) +
                               " " + std::to_string(value.Type()) + " ";
            for (unsigned long b = 0; b < value.Size(); ++b) {
                char hex[4];
                std::snprintf(hex, sizeof hex, "%02X", value.Data()[b]);
                line += hex;
            }
            lines.push_back(line);
        }
        return true;
    }

    std::vector<std::string> lines;
};
