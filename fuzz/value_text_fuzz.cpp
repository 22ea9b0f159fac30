// Fuzzes the text form of registry values: any text of any type parses without fault, and the
// data it gives survives a trip through the text form unchanged.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "core/registry/ozRegValue.h"

namespace {

std::string Bytes(const ozRegValue& value)
{
    return std::string(reinterpret_cast<const char*>(value.Data()), value.Size());
}

}  // namespace

// Input: one byte choosing the data type, then the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    static const unsigned long types[] = {
        RegNone, RegSz, RegExpandSz, RegBinary, RegDword, RegDwordBigEndian, RegMultiSz, 11};
    unsigned long type = types[data[0] % (sizeof types / sizeof types[0])];
    std::string text(reinterpret_cast<const char*>(data + 1), size - 1);

    ozRegValue parsed;
    parsed.SetFormattedData(type, text.c_str(), false);
    if (parsed.Data() == nullptr)
        return 0;
    ozRegValue reparsed;
    reparsed.SetFormattedData(type, parsed.FormattedValue().c_str(), false);
    if (Bytes(parsed) != Bytes(reparsed))
        std::abort();
    return 0;
}
