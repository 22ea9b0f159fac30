// The byte layout of Registry.pol files: one record pinned byte by byte, and every way a file
// can be malformed refused with the offset of the fault.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ozPolTestSupport.h"

using namespace std::string_literals;

namespace {

// One DWORD record, laid out by hand: "[" at 8, key at 10, name at 16, type at 22, size at 28,
// data at 34, "]" at 38.
const std::string OneRecord =
    "PReg\x01\0\0\0"
    "[\0K\0\0\0;\0V\0\0\0;\0\x04\0\0\0;\0\x04\0\0\0;\0\x01\0\0\0]\0"s;

// Reading is checked by reading back what is written, below.
TEST(PolFormatTest, WritesTheLayoutByteForByte)
{
    EXPECT_EQ(PolFile({{u"K", u"V", 4, "\x01\0\0\0"s}}), OneRecord);
}

TEST(PolFormatTest, ReadsRecordsThatAreUnusualButWellFormed)
{
    // Odd-sized binary data puts the next record on an odd offset; brackets and semicolons
    // inside text are text; empty key, name and data are allowed.
    const std::vector<ozPolRecord> written = {
        {u"A;]\\[B", u"x;y]", 3, "\x01\x02\x03"s, 0},
        {u"", u"", 0, "", 0},
        {u"K", u"\u00E9\U0001D11E", 1, Utf16(u"]\0"s), 0},
    };
    std::vector<ozPolRecord> read;
    ozStatus status = ozReadPolRecords(PolFile(written), read);
    ASSERT_TRUE(status.IsOk()) << status.Message();
    ASSERT_EQ(read.size(), written.size());
    for (std::size_t i = 0; i < read.size(); ++i) {
        EXPECT_EQ(read[i].key, written[i].key) << i;
        EXPECT_EQ(read[i].name, written[i].name) << i;
        EXPECT_EQ(read[i].type, written[i].type) << i;
        EXPECT_EQ(read[i].data, written[i].data) << i;
    }
    EXPECT_EQ(read[0].offset, 8u);
    EXPECT_EQ(read[1].offset, 8u + 47u);
}

TEST(PolFormatTest, RefusesMalformedFilesNamingTheOffset)
{
    const std::string header = OneRecord.substr(0, 8);
    auto withByte = [](std::string bytes, std::size_t at, char byte) {
        bytes.replace(at, 1, 1, byte);
        return bytes;
    };
    const struct {
        const char* what;
        std::string bytes;
        std::size_t offset;
        const char* message;
    } cases[] = {
        {"empty", "", 0, "too short for the \"PReg\" header"},
        {"bad signature", withByte(OneRecord, 3, 'x'), 0, "does not begin with \"PReg\""},
        {"header cut", "PReg\x01\0"s, 4, "ends inside the header's version"},
        {"version 2", withByte(OneRecord, 4, 2), 4, "unsupported version 2"},
        {"no bracket", withByte(OneRecord, 8, '('), 8, "expected '[' opening a record"},
        {"key unterminated", header + "[\0K\0"s, 10, "key path has no terminating zero"},
        {"odd byte in key", header + "[\0K"s, 10, "key path has no terminating zero"},
        {"no ';' after key", withByte(OneRecord, 14, ','), 14, "expected ';' after the key path"},
        {"name unterminated", OneRecord.substr(0, 18), 16, "value name has no terminating zero"},
        {"type cut", OneRecord.substr(0, 24), 22, "ends inside the value type"},
        {"no ';' after size", withByte(OneRecord, 32, 0), 32, "expected ';' after the data size"},
        {"size beyond file", withByte(OneRecord, 28, 9), 34, "runs 3 bytes beyond the end"},
        {"huge size", withByte(withByte(OneRecord, 31, '\xFF'), 28, 0), 34, "beyond the end"},
        {"closing bracket missing", OneRecord.substr(0, 38), 38,
         "ends where ']' closing the record should stand"},
        {"wrong closing bracket", withByte(OneRecord, 38, ')'), 38, "expected ']'"},
        {"odd UTF-16 data", PolFile({{u"K", u"V", 1, "a\0\0"s, 0}}), 34,
         "not a whole number of UTF-16 characters"},
        {"second record cut", OneRecord + OneRecord.substr(8, 10), 40 + 8,
         "value name has no terminating zero"},
    };
    for (const auto& c : cases) {
        std::vector<ozPolRecord> records;
        ozStatus status = ozReadPolRecords(c.bytes, records);
        const std::string& said = status.Message();
        EXPECT_EQ(said.rfind("byte " + std::to_string(c.offset) + ": ", 0), 0u) << c.what << said;
        EXPECT_NE(said.find(c.message), std::string::npos) << c.what << ": " << said;
    }
}

}  // namespace
