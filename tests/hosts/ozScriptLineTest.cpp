// The script line parser: words and quoting, comments, assignments, and the malformed lines
// it refuses with the column of the fault.
#include <gtest/gtest.h>

#include "ozScriptLine.h"

namespace {

using Kind = ozScriptLine::Kind;

struct ParsedCase {
    const char* line;
    Kind kind;
    const char* name;
    std::vector<std::string> arguments;
};

class ScriptLineParses : public testing::TestWithParam<ParsedCase> {};

TEST_P(ScriptLineParses, IntoNameAndArguments)
{
    const ParsedCase& c = GetParam();
    ozScriptLine parsed;
    ozScriptLineError error;
    ASSERT_TRUE(ozParseScriptLine(c.line, parsed, error)) << c.line << ": " << error.message;
    EXPECT_EQ(parsed.kind, c.kind) << c.line;
    EXPECT_EQ(parsed.name, c.name) << c.line;
    EXPECT_EQ(parsed.arguments, c.arguments) << c.line;
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ScriptLineParses,
    testing::Values(
        ParsedCase{"", Kind::Blank, "", {}}, ParsedCase{"   \t ", Kind::Blank, "", {}},
        ParsedCase{"# SetADM x.adm", Kind::Blank, "", {}},
        ParsedCase{"   # indented comment", Kind::Blank, "", {}},
        ParsedCase{"\r", Kind::Blank, "", {}}, ParsedCase{"Tree", Kind::Call, "Tree", {}},
        ParsedCase{"Tree\r", Kind::Call, "Tree", {}},
        ParsedCase{"  Save  a.ozp\tb.ozp  ", Kind::Call, "Save", {"a.ozp", "b.ozp"}},
        // Backslashes in words and in quotes (except before " and \) stand for themselves.
        ParsedCase{"Parts M\\Cat\\Pol", Kind::Call, "Parts", {"M\\Cat\\Pol"}},
        ParsedCase{"SetADM \"C:\\a b\\x.adm\"", Kind::Call, "SetADM", {"C:\\a b\\x.adm"}},
        ParsedCase{"Add 1 \"\\\"hi\\\" \\\\ e\"", Kind::Call, "Add", {"1", "\"hi\" \\ e"}},
        ParsedCase{"Load u.ozp \"\"", Kind::Call, "Load", {"u.ozp", ""}},
        // '#' after the start of a line is text, '=' as an argument of a call too.
        ParsedCase{"AddString 5 #5", Kind::Call, "AddString", {"5", "#5"}},
        ParsedCase{"SetPart P Mapping a=1", Kind::Call, "SetPart", {"P", "Mapping", "a=1"}},
        ParsedCase{"ShowUser = FALSE", Kind::PropertySet, "ShowUser", {"FALSE"}},
        ParsedCase{"ozVariableStart = \"\"", Kind::PropertySet, "ozVariableStart", {""}},
        ParsedCase{"Lib = \"my lib\"", Kind::PropertySet, "Lib", {"my lib"}},
        ParsedCase{"AddString \"=\" x", Kind::Call, "AddString", {"=", "x"}},
        ParsedCase{"_x1 = 2", Kind::PropertySet, "_x1", {"2"}}));

struct ErrorCase {
    const char* line;
    std::size_t column;
    const char* message;  // a part of the message
};

class ScriptLineRefuses : public testing::TestWithParam<ErrorCase> {};

TEST_P(ScriptLineRefuses, NamingTheColumn)
{
    const ErrorCase& c = GetParam();
    ozScriptLine parsed;
    ozScriptLineError error;
    ASSERT_FALSE(ozParseScriptLine(c.line, parsed, error)) << c.line;
    EXPECT_EQ(error.column, c.column) << c.line;
    EXPECT_NE(error.message.find(c.message), std::string::npos) << c.line << ": " << error.message;
}

INSTANTIATE_TEST_SUITE_P(Lines, ScriptLineRefuses,
                         testing::Values(ErrorCase{"SetADM \"x.adm", 8, "not closed"},
                                         // The escaped quote does not close the text.
                                         ErrorCase{"SetADM \"x\\\"", 8, "not closed"},
                                         ErrorCase{"SetADM \"a\"b", 11, "blank must follow"},
                                         ErrorCase{"SetADM a\"b\"", 9, "inside a word"},
                                         ErrorCase{"\"Tree\"", 1, "member name"},
                                         ErrorCase{"  1Tree", 3, "member name"},
                                         ErrorCase{"ShowUser=FALSE", 1, "blanks around ="},
                                         ErrorCase{"ShowUser =", 10, "exactly one value"},
                                         ErrorCase{"ShowUser = a b", 10, "exactly one value"}));

TEST(ScriptTextQuoting, KeepsEveryResultOnOneLine)
{
    EXPECT_EQ(ozQuoteScriptText(""), "\"\"");
    EXPECT_EQ(ozQuoteScriptText("a\"b\\c"), "\"a\\\"b\\\\c\"");
    EXPECT_EQ(ozQuoteScriptText("one\ntwo\r\tthree"), "\"one\\ntwo\\r\\tthree\"");
}

TEST(ScriptTextQuoting, ReadsBackAsTheSameArgument)
{
    for (std::string text : {"", "plain", "with blanks", "q\"uo\"te", "back\\slash\\", "\\\""}) {
        ozScriptLine parsed;
        ozScriptLineError error;
        ASSERT_TRUE(ozParseScriptLine("GetString " + ozQuoteScriptText(text), parsed, error))
            << text;
        ASSERT_EQ(parsed.arguments.size(), 1u);
        EXPECT_EQ(parsed.arguments[0], text);
    }
}

}  // namespace
