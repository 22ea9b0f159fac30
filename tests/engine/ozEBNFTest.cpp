// The grammar engine on its own: grammars and templates written by the tests, and actions
// of this executable that record what they are called with.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "engine/ozEBNF.h"
#include "tests/support/ozTestFiles.h"

#if defined(_WIN32)
#define OZ_TEST_ACTION extern "C" __declspec(dllexport)
#else
#define OZ_TEST_ACTION extern "C" __attribute__((visibility("default")))
#endif

namespace {

// What the actions saw, one line per call: "type|text|morph", numbers as their value.
std::vector<std::string> calls;
int codeObject = 0;
intptr_t currentCode = 0;
intptr_t codeHandedIn = 0;
int destroyed = 0;
// The files the actions that read again name.
std::string grammarFile, templateFile;

}  // namespace

OZ_TEST_ACTION intptr_t Record(intptr_t argument)
{
    auto* token = reinterpret_cast<ozEBNFToken*>(argument);
    std::string value = token->type == EBNFTokenNumber ? std::to_string(token->number)
                                                       : std::string(ozEBNFTokenText(token));
    calls.push_back(std::to_string(token->type) + "|" + value + "|" + token->morph);
    return 1;
}

OZ_TEST_ACTION intptr_t Refuse(intptr_t)
{
    error_set_desc("refused on purpose");
    error_set_code(1129);
    return 0;
}

OZ_TEST_ACTION intptr_t RefuseSilently(intptr_t)
{
    return 0;
}

OZ_TEST_ACTION intptr_t RunOutOfMemory(intptr_t)
{
    throw std::bad_alloc();
}

OZ_TEST_ACTION intptr_t ReadTemplateAgain(intptr_t)
{
    return FileLoad(templateFile.c_str(), 1);
}

OZ_TEST_ACTION intptr_t ReadGrammarAgain(intptr_t)
{
    return EBNFLoad(grammarFile.c_str());
}

OZ_TEST_ACTION intptr_t SetCodeH(intptr_t code)
{
    codeHandedIn = code;
    currentCode = code;
    return 1;
}

OZ_TEST_ACTION intptr_t PrepareCodeGeneration(intptr_t)
{
    if (currentCode == 0)
        currentCode = reinterpret_cast<intptr_t>(&codeObject);
    return 1;
}

OZ_TEST_ACTION intptr_t GetCodeH(intptr_t)
{
    intptr_t code = currentCode;
    currentCode = 0;
    return code;
}

OZ_TEST_ACTION intptr_t DestroyCode(intptr_t)
{
    ++destroyed;
    currentCode = 0;
    return 1;
}

namespace {

class EngineTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        calls.clear();
        codeHandedIn = 0;
        destroyed = 0;
        messages = stringlist_create();
        error_set_string_list(messages);
        grammarFile = grammar.Path();
        templateFile = adm.Path();
    }
    void TearDown() override
    {
        EBNFDestroy();
        stringlist_destroy(messages);
    }

    bool LoadGrammar(const std::string& text) const
    {
        grammar.Write(text);
        return EBNFLoad(grammar.Path()) != 0;
    }
    // Loads the grammar (which must be good) and reads the template.
    bool Read(const std::string& grammarText, const std::string& templateText)
    {
        calls.clear();
        EXPECT_TRUE(LoadGrammar(grammarText)) << ErrorMessage();
        adm.Write(templateText);
        return FileLoad(adm.Path(), 1) > 0;
    }
    std::string Where(int line, int column) const
    {
        return std::string(adm.Path()) + ":" + std::to_string(line) + ":" + std::to_string(column) +
               ": ";
    }

    void* messages = nullptr;
    ozTestFile grammar{"ozadm-engine-test.bnf"};
    ozTestFile adm{"ozadm-engine-test.adm"};
};

using Calls = std::vector<std::string>;

const char* const AllTokens =
    "start = { NUMBER @Record | WORD @Record | STRING @Record | REF @Record } ;";

TEST_F(EngineTest, TokensReachActionsWithTypeTextAndSource)
{
    ASSERT_TRUE(Read(AllTokens,
                     "abc \"q t\" 42 \"7\" !!Cat:x ; a comment \"unclosed\n"
                     "x;y 4294967296\n4294967296 \"\"\t{GUID}\r\n"))
        << ErrorMessage();
    EXPECT_EQ(calls, Calls({"1|abc|abc", "2|q t|\"q t\"", "3|42|42", "3|7|\"7\"", "9|Cat:x|!!Cat:x",
                            "1|x|x", "1|4294967296|4294967296", "2||\"\"", "1|{GUID}|{GUID}"}));
    EXPECT_STREQ(ErrorMessage(), "");
}

TEST_F(EngineTest, KeywordsMatchInAnyCaseAndClassesCanLeaveThemOut)
{
    ASSERT_TRUE(Read("start = { \"Begin\" { WORD - \"end\" @Record } \"END\" @Record } ;",
                     "BEGIN a b End begin c end"))
        << ErrorMessage();
    EXPECT_EQ(calls, Calls({"1|a|a", "1|b|b", "1|End|End", "1|c|c", "1|end|end"}));
    // A literal argument, and an action without a token.
    ASSERT_TRUE(Read("start = @Record WORD @Record(\"lit\") ;", "w")) << ErrorMessage();
    EXPECT_EQ(calls, Calls({"0||", "2|lit|lit"}));
}

TEST_F(EngineTest, VersionConditionsChooseBranches)
{
    const char* text =
        "#if version >= 4\n a\n #if VERSION < 3\n b\n #else\n c\n #endif\n"
        "#else\n d\n #endif\n"
        "#if version == 4 ; comment\n e\n#endif\n"
        "#if version > 4\n \"never closed\n#endif\n";
    ASSERT_TRUE(Read("start = { WORD @Record } ;", text)) << ErrorMessage();
    EXPECT_EQ(calls, Calls({"1|a|a", "1|c|c", "1|e|e"}));
    ASSERT_TRUE(Read("%version 2; start = { WORD @Record } ;", text)) << ErrorMessage();
    EXPECT_EQ(calls, Calls({"1|d|d"}));
}

// A template that fails: the message begins with the file, place and number, or holds `part`.
TEST_F(EngineTest, MalformedTemplatesFailWithNumberAndPlace)
{
    stringlist_add(messages, 1004, "The template does not follow the grammar");
    const std::string notGrammar = "error 1004: The template does not follow the grammar: ";
    const std::string unclosed = notGrammar + "a text in quotes is not closed on its line";
    std::string deep(200000, ' ');
    for (size_t i = 0; i < deep.size(); i += 2)
        deep[i] = '(';
    struct Case {
        std::string text, message;
        const char* grammar = "start = { WORD } ;";
    } cases[] = {
        {"CLASS\n  nobody END",
         "2:3: " + notGrammar + "expected \"MACHINE\", \"USER\", found \"nobody\"",
         "start = \"CLASS\" ( \"USER\" | \"MACHINE\" ) \"END\" ;"},
        {"CLASS", "1:6: " + notGrammar + "expected \"END\", found the end of the file",
         "start = \"CLASS\" \"END\" ;"},
        {"a\n  \"b", "2:3: " + unclosed},
        {"a \"b\rc\"", "1:3: " + unclosed},
        {"a\n#endif", "2:1: error 1005: #endif without #if"},
        {"#if version >= 4\na", "1:1: error 1005: #if without #endif"},
        {"#if vers >= 4\n#endif", "1:1: error 1005: expected \"#if version <op> N\""},
        {"#pragma x", "1:1: error 1005: unknown directive \"#pragma\""},
        {"a\n\n   \"q\"",
         "3:4: " + notGrammar + "expected the end of the file, found the text \"q\""},
        {"a \x01", "1:3: " + notGrammar + "unexpected control character 0x01"},
        {ozUtf16Bytes(u"CLASS") + "x", "odd number of bytes"},
        {deep, "nested more than", "start = { \"(\" start } \")\" ;"},
    };
    for (const Case& each : cases) {
        EXPECT_FALSE(Read(each.grammar, each.text)) << each.message;
        std::string message = ErrorMessage();
        EXPECT_TRUE(
            message.rfind(std::string(adm.Path()) + ":" + each.message, 0) == 0 ||
            (!std::isdigit(each.message[0]) && message.find(each.message) != std::string::npos))
            << message;
    }
}

TEST_F(EngineTest, FailingActionGivesItsNumberDescriptionAndToken)
{
    stringlist_add(messages, 1129, "Unknown string");
    EXPECT_FALSE(Read("start = { WORD @Record } REF @Refuse WORD ;", "a b\n  !!NoSuch c"));
    EXPECT_EQ(std::string(ErrorMessage()),
              Where(2, 3) + "error 1129: Unknown string: refused on purpose");
    EXPECT_EQ(calls.size(), 2u) << "actions before the failure ran";

    EXPECT_FALSE(Read("start = WORD @RefuseSilently ;", "a"));
    EXPECT_EQ(std::string(ErrorMessage()), Where(1, 1) + "error 0: action RefuseSilently failed");
}

TEST_F(EngineTest, OutOfMemoryAndReadingWithinAReadHaveNumbersOfTheirOwn)
{
    struct Case {
        const char* grammar;
        const char* message;
    } cases[] = {
        {"start = WORD @RunOutOfMemory ;", ": error 1007: out of memory"},
        {"start = WORD @ReadTemplateAgain ;", ":1:1: error 1008: a template is being read already"},
        {"start = WORD @ReadGrammarAgain ;", ":1:1: error 1008: a template is being read already"},
    };
    for (const Case& each : cases) {
        EXPECT_FALSE(Read(each.grammar, "a")) << each.grammar;
        EXPECT_EQ(std::string(ErrorMessage()), adm.Path() + std::string(each.message));
        EXPECT_EQ(EBNFGetCodeHandle(), &codeObject) << "the code object comes back";
    }
    EXPECT_TRUE(Read(AllTokens, "a")) << "the engine reads again after each: " << ErrorMessage();
}

TEST_F(EngineTest, MalformedGrammarsFailWithLineAndColumn)
{
    struct Case {
        const char* grammar;
        const char* message;
    } cases[] = {
        {"start = WORD\n  | ( WORD ;", ":2:12: error 1002: expected \")\""},
        {"start = other ;", ":1:9: error 1002: rule \"other\" is used but never defined"},
        {"a = WORD ;\na = STRING ;", ":2:1: error 1002: rule \"a\" is defined twice"},
        {"start = [ WORD ] start ;",
         ":1:1: error 1002: rule \"start\" calls itself before reading a token"},
        {"start = \"two words\" ;",
         ":1:9: error 1002: keyword \"two words\" cannot be written as one word"},
        {"start = WORDS ;", ":1:9: error 1002: rule \"WORDS\" is used but never defined"},
        {"start = WORD @NoSuchAction ;",
         ":1:14: error 1003: the grammar names the action \"NoSuchAction\""},
        {"%colour 3;", ":1:8: error 1002: unknown directive \"%colour\""},
        {"# nothing but a comment\n", ":2:1: error 1002: the grammar has no rules"},
    };
    for (const Case& each : cases) {
        EXPECT_FALSE(LoadGrammar(each.grammar)) << each.grammar;
        EXPECT_EQ(std::string(ErrorMessage()).rfind(std::string(grammar.Path()) + each.message, 0),
                  0u)
            << ErrorMessage();
    }
    ozTestFile missing("ozadm-engine-test-missing.bnf");
    std::filesystem::remove(missing.Path());
    EXPECT_EQ(EBNFLoad(missing.Path()), 0);
    EXPECT_NE(std::string(ErrorMessage()).find("error 1001: cannot open"), std::string::npos);
}

TEST_F(EngineTest, FailedGrammarKeepsTheOneBeforeAndTemplatesNeedOne)
{
    adm.Write("x");
    EXPECT_EQ(FileLoad(adm.Path(), 1), 0);
    EXPECT_NE(std::string(ErrorMessage()).find("error 1006"), std::string::npos);
    ASSERT_TRUE(LoadGrammar(AllTokens));
    EXPECT_FALSE(LoadGrammar("start = ( ;"));
    EXPECT_EQ(FileLoad(adm.Path(), 1), 1) << ErrorMessage();
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(EngineTest, TextAfterASectionHeaderIsNotRead)
{
    ASSERT_TRUE(Read("start = { WORD @Record } [ SECTION REST ] ;",
                     "a\n[Strings]\nname=\"unclosed\n#endif\n\x01"))
        << ErrorMessage();
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(EngineTest, CodeObjectIsLentAndTakenBack)
{
    ASSERT_TRUE(Read(AllTokens, "a"));
    void* first = EBNFGetCodeHandle();
    EXPECT_EQ(first, &codeObject);
    EXPECT_EQ(codeHandedIn, 0) << "nothing to lend on the first load";

    EBNFSetCodeHandle(first);
    ASSERT_EQ(FileLoad(adm.Path(), 1), 1);
    EXPECT_EQ(codeHandedIn, reinterpret_cast<intptr_t>(first));
    EXPECT_EQ(EBNFGetCodeHandle(), first);

    EBNFDestroyCode();
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(EBNFGetCodeHandle(), nullptr);

    EXPECT_FALSE(Read(AllTokens, "a \"b"));
    EXPECT_EQ(EBNFGetCodeHandle(), &codeObject) << "a failed load still hands the code back";
}

}  // namespace
