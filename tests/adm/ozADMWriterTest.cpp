// The template writer's bytes: a whole short template, each part's lines, the [strings]
// section, and what a failed write leaves.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>

#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMText.h"
#include "core/registry/ozRegTree.h"
#include "tests/adm/ozADMSampleTree.h"
#include "tests/support/ozTestFiles.h"

namespace {

// What `write` puts into a fresh stream, with its result.
struct Written {
    bool result;
    std::string bytes;
};

Written WriteToFile(const std::function<bool(FILE*)>& write)
{
    ozTestFile file("ozadm-writer-test.adm");
    FILE* stream = std::fopen(file.Path(), "wb+");
    if (stream == nullptr)
        return {false, "cannot open " + std::string(file.Path())};
    Written written{write(stream), {}};
    std::fflush(stream);
    std::rewind(stream);
    for (int c; (c = std::fgetc(stream)) != EOF;)
        written.bytes.push_back(static_cast<char>(c));
    std::fclose(stream);
    return written;
}

struct TemplateTree : ozADMSampleTree {
    Written Save()
    {
        return WriteToFile([this](FILE* f) { return tree.Save(f); });
    }
    // The part's own text as its policy writes it, at the indentation of a policy's contents.
    Written SavePart(ozADMCtrl* part)
    {
        policy->AddControl(part);
        return WriteToFile([&](FILE* f) {
            for (int level = 0; level < 3; ++level)
                tree.IndentInc();
            return part->SaveADM(f, tree, policy->RegKey());
        });
    }
};

class WriterTest : public ::testing::Test, protected TemplateTree {};

TEST_F(WriterTest, PolicyBlocksAndActionLists)
{
    policy->Name("Same");
    policy->Explain("");
    policy->ClientExt("{0A}");
    policy->Valuename("");
    policy->ValueOff().SetInit();
    auto* on = new ozADMActionList;
    const char* keys[] = {"Software\\Pol", "Software\\Other", "Software\\Other"};
    for (const char* path : keys) {
        auto* item = new ozActionItem;
        item->RegKey(Key(path));
        item->ValueName("say \"hi\"");
        item->Value().SetDelete();
        on->Add(item);
    }
    policy->ActionListOn(on);
    auto* second = new ozADMPolicy;
    second->Name("Same");
    second->RegKey("Software\\Pol");
    tree.SetCurrentNode(category);
    tree.AddBelowAsLast(second);

    Written written = Save();
    EXPECT_TRUE(written.result);
    EXPECT_EQ(Save().bytes, written.bytes) << "numbering starts anew with each save";
    EXPECT_EQ(written.bytes,
              "CLASS MACHINE\n"
              "    CATEGORY !!string1\n"
              "        POLICY !!string2\n"
              "            #if VERSION > 2\n"
              "                EXPLAIN \"\"\n"
              "            #endif\n"
              "            KEYNAME \"Software\\Pol\"\n"
              "            VALUENAME \"\"\n"
              "            #if VERSION > 2\n"
              "                CLIENTEXT {0A}\n"
              "            #endif\n"
              "            VALUEON NUMERIC 1\n"
              "            ACTIONLISTON\n"
              "                VALUENAME !!string3\n"
              "                VALUE DELETE\n"
              "                KEYNAME \"Software\\Other\"\n"
              "                VALUENAME !!string4\n"
              "                VALUE DELETE\n"
              "                VALUENAME !!string5\n"
              "                VALUE DELETE\n"
              "            END ACTIONLISTON\n"
              "        END POLICY\n"
              "        POLICY !!string6\n"
              "            KEYNAME \"Software\\Pol\"\n"
              "        END POLICY\n"
              "        END CATEGORY\n"
              "\n"
              "\n[strings]\n\n"
              "string1=\"Network settings\"\n"
              "string2=\"Same\"\n"
              "string3=\"say \"hi\"\"\n"
              "string4=\"say \"hi\"\"\n"
              "string5=\"say \"hi\"\"\n"
              "string6=\"Same\"\n")
        << "equal texts are not merged; quotes are not escaped";
}

TEST_F(WriterTest, NoTextsNoStringsSection)
{
    delete category;  // takes the policy with it
    EXPECT_EQ(Save().bytes, "CLASS MACHINE\n\n");
}

TEST_F(WriterTest, PolicyWithoutKeyEndsTheSave)
{
    auto* keyless = new ozADMPolicy;
    keyless->Name("Keyless");
    tree.SetCurrentNode(category);
    tree.AddBelowAsLast(keyless);
    Written written = Save();
    EXPECT_FALSE(written.result);
    EXPECT_EQ(written.bytes.find("[strings]"), std::string::npos) << written.bytes;
    EXPECT_NE(written.bytes.find("POLICY !!string4\n"), std::string::npos)
        << "what was written stays: " << written.bytes;
    EXPECT_FALSE(tree.Save(nullptr));
}

TEST(WriterIndentation, NeverBelowZero)
{
    ozADMTree tree;
    tree.IndentDec();
    tree.IndentInc();
    EXPECT_EQ(WriteToFile([&](FILE* f) { return tree.WriteIndent(f); }).bytes, "    ");
    EXPECT_FALSE(tree.WriteIndent(nullptr));
}

// The part's lines after "PART name ", for what a write and read back cannot tell apart (what
// is left out, where a line ends, which lines older readers must skip): the template round
// trips check that every setting of every part comes back.
TEST(WriterParts, Lines)
{
    const std::string in = "            ";  // a policy's contents
    struct Row {
        const char* what;
        std::function<ozADMCtrl*(TemplateTree&)> make;
        std::string expected;
    };
    const Row rows[] = {
        {"check box in the policy's key",
         [](TemplateTree& t) {
             auto* part = new ozADMCheckBox;
             part->Key(t.policy->RegKey());
             return part;
         },
         "CHECKBOX\n" + in + "VALUEON NUMERIC 1\n" + in + "VALUEOFF NUMERIC 0\n"},
        {"numeric with default and TXTCONVERT, no line feed after it",
         [](TemplateTree&) {
             auto* part = new ozADMNumeric;
             part->Default(5);
             part->DefaultEmpty(false);
             part->Min(1);
             part->Max(10);
             part->Spin(0);
             part->TxtConvert(true);
             part->ClientExt("{N}");
             return part;
         },
         "NUMERIC\n" + in + "DEFAULT 5\n" + in + "MIN 1\n" + in + "MAX 10\n" + in + "SPIN 0\n" +
             in + "TXTCONVERT" + in + "#if VERSION > 2\n" + in + "    CLIENTEXT {N}\n" + in +
             "#endif\n"},
        {"text: the keyword alone",
         [](TemplateTree& t) {
             auto* part = new ozADMText;
             part->Key(t.Key("Software\\Elsewhere"));
             part->ValueName("");
             part->ClientExt("{T}");
             return part;
         },
         "TEXT\n"},
        {"drop-down list with default, action list and NOSORT",
         [](TemplateTree& t) {
             auto* part = new ozADMDropdownList;
             part->ValueName("d");
             part->NoSort(true);
             ozADMValue value;
             value.SetNumeric(1);
             part->AddItem("first", value, nullptr);
             auto* list = new ozADMActionList;
             auto* item = new ozActionItem;
             item->RegKey(t.Key("Software\\Pol\\Extra"));
             item->ValueName("x");
             item->Value().SetString("v");
             list->Add(item);
             value.SetDelete();
             part->AddItem("second", value, list);
             part->Default(1);
             return part;
         },
         "DROPDOWNLIST\n" + in + "VALUENAME !!string1\n" + in + "ITEMLIST\n" + in +
             "    NAME !!string2\n" + in + "    VALUE NUMERIC 1\n" + in + "    NAME !!string3\n" +
             in + "    VALUE DELETE\tDEFAULT\n" + in + "    ACTIONLIST\n" + in +
             "        KEYNAME \"Software\\Pol\\Extra\"\n" + in + "        VALUENAME !!string4\n" +
             in + "        VALUE !!string5\n" + in + "    END ACTIONLIST\n" + in +
             "END ITEMLIST\n" + in + "#if VERSION > 1\n" + in + "NOSORT\n" + in + "#endif\n"},
        {"list box with explicit values drops the prefix",
         [](TemplateTree&) {
             auto* part = new ozADMListBox;
             part->ValuePrefix("p");
             part->ExplicitValue(true);
             return part;
         },
         "LISTBOX\n" + in + "EXPLICITVALUE\n"},
    };
    for (const Row& row : rows) {
        TemplateTree fresh;
        Written written = fresh.SavePart(row.make(fresh));
        EXPECT_TRUE(written.result) << row.what;
        EXPECT_EQ(written.bytes, row.expected) << row.what;
    }
}

#if !defined(_WIN32)
TEST_F(WriterTest, DeviceFullPartWay)
{
    std::string whole = Save().bytes;
    char memory[100];
    FILE* full = fmemopen(memory, sizeof memory, "w");
    ASSERT_NE(full, nullptr);
    std::setvbuf(full, nullptr, _IONBF, 0);
    EXPECT_FALSE(tree.Save(full));
    std::fclose(full);
    EXPECT_EQ(std::string(memory, sizeof memory - 1), whole.substr(0, sizeof memory - 1))
        << "the output up to the failure stays";

    FILE* device = std::fopen("/dev/full", "w");
    if (device == nullptr)
        GTEST_SKIP() << "no /dev/full";
    EXPECT_FALSE(tree.Save(device)) << "a buffered stream fails when flushed";
    std::fclose(device);
}
#endif

}  // namespace
