#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/registry/ozRegExport.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozRootKey.h"
#include "core/registry/ozSubKey.h"

namespace {

// Records the path of every key handed over; refuses the key named `refuse`.
class RecordingExporter : public ozRegExport {
public:
    bool BeginMachineProfile(const char*) override { return true; }
    bool BeginUserProfile(const char*) override { return true; }
    bool ExportKey(ozSubKey* key) override
    {
        exported.push_back(std::to_string(key->Root()) + ":" + key->KeyPath());
        return refuse.empty() || key->Name() != refuse;
    }
    bool Flush() override { return true; }

    std::vector<std::string> exported;
    std::string refuse;
};

std::vector<HKEY> RootOrder(ozRegTree& tree)
{
    std::vector<HKEY> roots;
    for (ozTreeNode* node = tree.Down(); node != nullptr; node = node->Next())
        roots.push_back(static_cast<ozRootKey*>(node)->HKey());
    return roots;
}

TEST(RegTreeTest, RootKeysStandInTheOrderTheyWereFirstNeeded)
{
    ozRegTree tree;
    EXPECT_EQ(tree.HasKey(HKEY_LOCAL_MACHINE, "Software"), nullptr);
    EXPECT_EQ(tree.Down(), nullptr) << "HasKey creates nothing";
    ozSubKey* x = tree.FindKey(HKEY_LOCAL_MACHINE, "Software\\X");
    ASSERT_NE(x, nullptr);
    EXPECT_EQ(x->Root(), 2u);
    tree.FindKey(HKEY_CURRENT_USER, "Software");
    tree.FindKey(HKEY_CLASSES_ROOT, ".txt");
    EXPECT_EQ(tree.FindKey(HKEY_LOCAL_MACHINE, "software\\x"), x);
    EXPECT_EQ(RootOrder(tree),
              (std::vector<HKEY>{HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER, HKEY_CLASSES_ROOT}));
    EXPECT_EQ(tree.FindKey(HKEY_USERS, nullptr), nullptr);
    EXPECT_EQ(tree.HasKey(HKEY_LOCAL_MACHINE, "SOFTWARE\\X"), x);
    EXPECT_EQ(tree.HasKey(HKEY_USERS, "Software\\X"), nullptr);
}

TEST(RegTreeTest, ResetSelectedClearsEveryKey)
{
    ozRegTree tree;
    ozSubKey* a = tree.FindKey(HKEY_LOCAL_MACHINE, "A\\B");
    ozSubKey* c = tree.FindKey(HKEY_CURRENT_USER, "C");
    a->Selected(true);
    c->Selected(true);
    EXPECT_TRUE(tree.ResetSelected());
    EXPECT_FALSE(a->Selected());
    EXPECT_FALSE(c->Selected());
}

class RegTreeSaveTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        tree.FindKey(HKEY_LOCAL_MACHINE, "Software\\A\\Deep");
        tree.FindKey(HKEY_LOCAL_MACHINE, "Software\\B");
        tree.FindKey(HKEY_LOCAL_MACHINE, "System");
        tree.FindKey(HKEY_CURRENT_USER, "Env");
    }
    ozRegTree tree;
    RecordingExporter exporter;
};

TEST_F(RegTreeSaveTest, HandsEveryKeyOverInPreOrderAndStopsAtTheFirstRefusal)
{
    EXPECT_TRUE(tree.Save(&exporter));
    EXPECT_EQ(exporter.exported,
              (std::vector<std::string>{"2:Software", "2:Software\\A", "2:Software\\A\\Deep",
                                        "2:Software\\B", "2:System", "1:Env"}));
    exporter.exported.clear();
    exporter.refuse = "A";
    EXPECT_FALSE(tree.Save(&exporter));
    EXPECT_EQ(exporter.exported, (std::vector<std::string>{"2:Software", "2:Software\\A"}));
    EXPECT_FALSE(tree.Save(static_cast<ozRegExport*>(nullptr)));
}

}  // namespace
