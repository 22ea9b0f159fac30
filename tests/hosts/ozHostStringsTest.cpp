// The host string tables: the reader, and the bundled English and German tables, which must
// give a text for every message the control, the engine and the loader show, with the same
// arguments.
#include <gtest/gtest.h>

#include "ozHostStrings.h"
#include "tests/support/ozTestFiles.h"

namespace {

std::map<unsigned short, std::string> Bundled(const std::string& language)
{
    std::map<unsigned short, std::string> table;
    std::string error;
    EXPECT_TRUE(ozReadHostStrings(std::string(OZADM_DATA_DIR) + "/strings-" + language + ".txt",
                                  table, error))
        << error;
    return table;
}

int Arguments(const std::string& text)
{
    int count = 0;
    for (std::size_t pos = 0; (pos = text.find('%', pos)) != std::string::npos; pos += 2)
        if (pos + 1 < text.size() && text[pos + 1] == 's')
            ++count;
    return count;
}

TEST(BundledStrings, CoverEveryMessageInBothLanguages)
{
    std::vector<unsigned short> required = {17,   18,   55,   56,   75,   79,   80,   94,
                                            95,   96,   97,   180,  190,  191,  192,  1001,
                                            1002, 1003, 1004, 1005, 1006, 1007, 1011, 1015};
    for (unsigned short n :
         {1100, 1101, 1102, 1103, 1104, 1106, 1107, 1108, 1109, 1110, 1111, 1112, 1113, 1114,
          1115, 1117, 1118, 1120, 1121, 1123, 1124, 1125, 1128, 1129, 1132, 1133, 1134, 1135})
        required.push_back(n);
    std::map<unsigned short, std::string> english = Bundled("en");
    std::map<unsigned short, std::string> german = Bundled("de");
    for (unsigned short number : required) {
        EXPECT_FALSE(english[number].empty()) << number;
        EXPECT_FALSE(german[number].empty()) << number;
    }
    ASSERT_EQ(english.size(), german.size());
    for (const auto& [number, text] : english) {
        ASSERT_TRUE(german.count(number)) << number;
        EXPECT_EQ(Arguments(text), Arguments(german[number])) << number;
    }
    EXPECT_EQ(Arguments(english[94]), 1);
    EXPECT_EQ(Arguments(english[95]), 2);
}

class StringTableFile : public testing::Test {
protected:
    bool Read(const std::string& content)
    {
        m_file.Write(content);
        table.clear();
        return ozReadHostStrings(m_file.Path(), table, error);
    }
    ozTestFile m_file{"ozadm-strings-test.txt"};
    std::map<unsigned short, std::string> table;
    std::string error;
};

TEST_F(StringTableFile, ReadsNumberAndTextPerLine)
{
    ASSERT_TRUE(Read("\xEF\xBB\xBF# comment\r\n\n7 Seven %s\r\n65535  two blanks\n8 \n")) << error;
    EXPECT_EQ(table.size(), 3u);
    EXPECT_EQ(table[7], "Seven %s");
    EXPECT_EQ(table[65535], " two blanks");
    EXPECT_EQ(table[8], "");
}

TEST_F(StringTableFile, RefusesBadLinesNamingThem)
{
    for (const char* content : {"1 one\nx two\n", "1 one\n0 zero\n", "1 one\n65536 big\n",
                                "1 one\n12\n", "1 one\n1 again\n"}) {
        EXPECT_FALSE(Read(content)) << content;
        EXPECT_NE(error.find(":2: "), std::string::npos) << error;
    }
    EXPECT_FALSE(ozReadHostStrings(m_file.Path() + std::string(".missing"), table, error));
    EXPECT_NE(error.find("cannot be opened"), std::string::npos);
}

}  // namespace
