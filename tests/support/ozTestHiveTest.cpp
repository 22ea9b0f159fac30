#include <gtest/gtest.h>
#include <hivex.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "tests/support/ozTestHive.h"

namespace {

using namespace std::string_literals;
using OpenHive = std::unique_ptr<hive_h, int (*)(hive_h*)>;

OpenHive OpenForReading(const std::string& path)
{
    return OpenHive(hivex_open(path.c_str(), 0), hivex_close);
}

std::string HivePath()
{
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    return ::testing::TempDir() + test->test_suite_name() + "_" + test->name() + ".hive";
}

std::string ReadFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

std::string NodeName(hive_h* hive, hive_node_h node)
{
    char* name = hivex_node_name(hive, node);
    std::string copy = name != nullptr ? name : "<null>";
    std::free(name);
    return copy;
}

// The node at a backslash-separated path below the root, 0 when missing.
hive_node_h Find(hive_h* hive, const std::string& path)
{
    hive_node_h node = hivex_root(hive);
    for (size_t start = 0; node != 0 && !path.empty() && start <= path.size();) {
        const size_t end = std::min(path.find('\\', start), path.size());
        node = hivex_node_get_child(hive, node, path.substr(start, end - start).c_str());
        start = end + 1;
    }
    return node;
}

// "type:bytes" of a value; an empty string when missing.
std::string Value(hive_h* hive, const std::string& keyPath, const std::string& name)
{
    hive_value_h value = hivex_node_get_value(hive, Find(hive, keyPath), name.c_str());
    if (value == 0)
        return "";
    hive_type type{};
    size_t length = 0;
    char* bytes = hivex_value_value(hive, value, &type, &length);
    std::string result = std::to_string(type) + ":" + std::string(bytes, length);
    std::free(bytes);
    return result;
}

uint32_t U32At(const std::string& bytes, size_t at)
{
    uint32_t number = 0;
    for (size_t i = 0; i < 4; ++i)
        number |= uint32_t(static_cast<unsigned char>(bytes.at(at + i))) << (8 * i);
    return number;
}

TEST(TestHiveEmptyTest, OpensWithTheNamedRootOrRefusesNamesNoKeyCanHave)
{
    const std::string path = HivePath();
    for (std::string name :
         {"Wurzel-\xC3\x84"s, "\xD0\x9A\xD0\xBE\xD1\x80"s, std::string(255, 'x')}) {
        ASSERT_TRUE(ozTestHive::WriteEmpty(path, name));
        OpenHive hive = OpenForReading(path);
        ASSERT_NE(hive, nullptr) << name;
        hive_node_h root = hivex_root(hive.get());
        EXPECT_EQ(NodeName(hive.get(), root), name);
        EXPECT_EQ(hivex_node_nr_children(hive.get(), root), 0u);
        EXPECT_EQ(hivex_node_nr_values(hive.get(), root), 0u);
        // The header's write time, counted in 100 ns steps from 1601, is close to now.
        const int64_t unixSeconds = hivex_last_modified(hive.get()) / 10000000 - 11644473600;
        EXPECT_LE(std::abs(std::time(nullptr) - unixSeconds), 60);
    }
    for (std::string name : {""s, "A\\B"s, std::string(256, 'x')})
        EXPECT_FALSE(ozTestHive::WriteEmpty(path, name)) << name.size() << " bytes";
    ozTestHive unwritable(::testing::TempDir() + "missing/dir/x.hive");
    EXPECT_FALSE(unwritable.ok());
    EXPECT_FALSE(unwritable.AddKey("A"));
    EXPECT_FALSE(unwritable.Commit());
}

// libhivex refuses a base block whose checksum is wrong, so every hive the other tests open has
// a right one; it checks neither cell alignment nor security cells, so the file is inspected
// directly: the first bin is tiled by 8-byte aligned cells ending in a free one, and the root's
// security cell is a one-element circular list counting every key.
TEST(TestHiveEmptyTest, CellsAreAlignedAndEveryKeySharesTheRootSecurityCell)
{
    const std::string path = HivePath();
    {
        ozTestHive hive(path, "Odd");
        ASSERT_TRUE(hive.AddKey("A\\B"));
        ASSERT_TRUE(hive.AddKey("C"));
        ASSERT_TRUE(hive.Commit());
    }
    const std::string file = ReadFile(path);
    const size_t bins = 4096;
    size_t at = bins + 32;
    int32_t size = 0;
    while (at < 2 * bins) {
        size = static_cast<int32_t>(U32At(file, at));
        ASSERT_TRUE(size != 0 && std::abs(size) % 8 == 0) << "cell at " << at;
        at += std::abs(size);
    }
    EXPECT_EQ(at, 2 * bins);
    EXPECT_GT(size, 0);

    const uint32_t securityCell = U32At(file, bins + U32At(file, 0x24) + 4 + 0x2C);
    const size_t security = bins + securityCell + 4;
    EXPECT_EQ(file.substr(security, 2), "sk");
    EXPECT_EQ(U32At(file, security + 4), securityCell);
    EXPECT_EQ(U32At(file, security + 8), securityCell);
    EXPECT_EQ(U32At(file, security + 12), 4u);
}

TEST(TestHiveWriteTest, ThousandsOfKeysAndEveryKindOfValueReadBackAfterCommit)
{
    const std::string path = HivePath(), app = "Software\\Policies\\App";
    auto many = [](int key) {
        return "Many\\" + std::to_string(key / 100) + "\\" + std::to_string(key % 100);
    };
    {
        ozTestHive hive(path);
        ASSERT_TRUE(hive.ok());
        EXPECT_TRUE(hive.AddKey("Software\\Policies\\Empty"));
        EXPECT_TRUE(hive.SetString(app, "Text", "Gr\xC3\xBC\xC3\x9F\xE2\x82\xAC\xF0\x9D\x84\x9E"));
        EXPECT_TRUE(hive.SetString(app, "Path", "%A%", 2));
        EXPECT_TRUE(hive.SetValue(app, "Blob", 3, std::string("\x00\xFF", 2)));
        EXPECT_TRUE(hive.SetDword(app, "Number", 7));
        EXPECT_TRUE(hive.SetDword("SOFTWARE\\policies\\APP", "NUMBER", 0x12345678));
        EXPECT_TRUE(hive.SetMultiString(app, "List", {"ab", "c"}));
        EXPECT_TRUE(hive.SetString("", "", "d"));
        EXPECT_FALSE(hive.AddKey("Software\\\\Gap"));
        EXPECT_FALSE(hive.AddKey("Software\\"));
        for (int key = 0; key < 2000; ++key)
            ASSERT_TRUE(hive.SetDword(many(key), "Index", key));
        EXPECT_TRUE(hive.Commit());
        EXPECT_TRUE(hive.AddKey("DroppedWithoutCommit"));
    }
    OpenHive hive = OpenForReading(path);
    ASSERT_NE(hive, nullptr);
    EXPECT_EQ(hivex_node_nr_children(hive.get(), hivex_root(hive.get())), 2u);
    EXPECT_EQ(hivex_node_nr_children(hive.get(), Find(hive.get(), "Software\\Policies")), 2u);
    EXPECT_NE(Find(hive.get(), "Software\\Policies\\Empty"), 0u);
    EXPECT_EQ(NodeName(hive.get(), Find(hive.get(), app)), "App");
    EXPECT_EQ(Value(hive.get(), app, "Text"), "1:G\0r\0\xFC\0\xDF\0\xAC\x20\x34\xD8\x1E\xDD\0\0"s);
    EXPECT_EQ(Value(hive.get(), app, "Path"), "2:%\0A\0%\0\0\0"s);
    EXPECT_EQ(Value(hive.get(), app, "Blob"), "3:\0\xFF"s);
    EXPECT_EQ(Value(hive.get(), app, "Number"), "4:\x78\x56\x34\x12");
    EXPECT_EQ(Value(hive.get(), app, "List"), "7:a\0b\0\0\0c\0\0\0\0\0"s);
    EXPECT_EQ(hivex_node_nr_values(hive.get(), Find(hive.get(), app)), 5u);
    EXPECT_EQ(Value(hive.get(), "", ""), "1:d\0\0\0"s);
    EXPECT_EQ(hivex_node_nr_children(hive.get(), Find(hive.get(), "Many\\7")), 100u);
    for (int key = 0; key < 2000; ++key)
        ASSERT_EQ(Value(hive.get(), many(key), "Index"),
                  "4:" + std::string(reinterpret_cast<const char*>(&key), 4));
}

TEST(TestHiveTextTest, Utf16leCoversAllPlanesAndReplacesMalformedInput)
{
    EXPECT_EQ(ozTestHive::Utf16le("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"),
              "a\0\xE9\0\xAC\x20\x3D\xD8\x00\xDE"s);
    EXPECT_EQ(ozTestHive::Utf16le("\xFF\x61"), "\xFD\xFF\x61\0"s);
    EXPECT_EQ(ozTestHive::Utf16le("\xE2\x82\x61"), "\xFD\xFF\x61\0"s);  // truncated
    EXPECT_EQ(ozTestHive::Utf16le("\xED\xA0\x80"), "\xFD\xFF"s);        // surrogate
    EXPECT_EQ(ozTestHive::Utf16le("\xC0\xAF"), "\xFD\xFF"s);            // overlong
    EXPECT_EQ(ozTestHive::Utf16le("\xF4\x90\x80\x80"), "\xFD\xFF"s);    // above U+10FFFF
}

}  // namespace
