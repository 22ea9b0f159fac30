#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozRootKey.h"
#include "core/registry/ozSubKey.h"

namespace {

int ChildCount(ozTreeNode* node)
{
    int count = 0;
    for (ozTreeNode* child = node->Down(); child != nullptr; child = child->Next())
        ++count;
    return count;
}

class KeyTest : public ::testing::Test {
protected:
    void SetUp() override { tree.AddBelow(root = new ozRootKey(HKEY_LOCAL_MACHINE)); }

    ozRegTree tree;
    ozRootKey* root = nullptr;
};

TEST_F(KeyTest, FindSubKeyCreatesEachMissingComponentOnce)
{
    ozSubKey* b = root->FindSubKey("Software\\A\\B", 2);
    ASSERT_NE(b, nullptr);
    EXPECT_STREQ(b->Name(), "B");
    EXPECT_EQ(b->Root(), 2u);
    EXPECT_EQ(tree.GetCurr(), b);
    EXPECT_EQ(b->KeyPath(), "Software\\A\\B");
    EXPECT_EQ(ChildCount(root), 1);

    EXPECT_EQ(root->FindSubKey("software\\a\\B", 2), b);
    EXPECT_EQ(root->HasSubKey("SOFTWARE\\A\\b"), b);
    auto* software = static_cast<ozSubKey*>(root->Down());
    EXPECT_STREQ(software->Name(), "Software");  // not renamed by the lower-case lookup
    EXPECT_EQ(ChildCount(root), 1);
    EXPECT_EQ(ChildCount(software), 1);

    EXPECT_EQ(root->HasSubKey("Software\\Missing"), nullptr);
    EXPECT_EQ(ChildCount(software), 1);

    // New keys are appended as last child.
    ozSubKey* second = root->FindSubKey("Software\\Z", 2);
    EXPECT_EQ(software->Down()->Next(), second);
    EXPECT_EQ(second->ParentLink(), nullptr);

    ozRootKey loose(HKEY_CURRENT_USER);
    EXPECT_EQ(loose.FindSubKey("A", 1), nullptr) << "a key in no tree creates nothing";
}

TEST_F(KeyTest, PathComponentsMayBeEmptyButNotTooLong)
{
    ozSubKey* empty = root->FindSubKey("A\\", 2);
    ASSERT_NE(empty, nullptr);
    EXPECT_STREQ(empty->Name(), "");
    EXPECT_EQ(root->FindSubKey("A\\", 2), empty);

    std::string longName(ozRegKey::MaxNameLength, 'x');
    EXPECT_EQ(root->FindSubKey(longName.c_str(), 2), nullptr);
    EXPECT_EQ(root->FindSubKey(nullptr, 2), nullptr);
    EXPECT_EQ(root->HasSubKey(nullptr), nullptr);
}

TEST_F(KeyTest, LookupsNoticeKeysMovedRenamedOrDeletedByOtherMeans)
{
    ozSubKey* a = root->FindSubKey("P\\a", 2);
    ozSubKey* b = root->FindSubKey("P\\b", 2);
    ozSubKey* c = root->FindSubKey("P\\c", 2);

    b->Name("renamed");
    EXPECT_EQ(root->HasSubKey("P\\b"), nullptr);
    EXPECT_EQ(root->HasSubKey("P\\Renamed"), b);

    ASSERT_TRUE(tree.SetCurrentNode(a));
    ASSERT_TRUE(tree.Delete());
    EXPECT_EQ(root->HasSubKey("P\\a"), nullptr);
    EXPECT_EQ(root->HasSubKey("P\\c"), c);

    // A key linked in the middle by a plain tree operation is found as well.
    auto* inserted = new ozSubKey;
    inserted->Name("inserted");
    b->AddAfter(inserted);
    EXPECT_EQ(root->FindSubKey("P\\INSERTED", 2), inserted);

    // The first of two equally named siblings wins.
    auto* twin = new ozSubKey;
    twin->Name("C");
    c->AddAfter(twin);
    EXPECT_EQ(root->HasSubKey("P\\c"), c);
    auto* earlier = new ozSubKey;
    earlier->Name("c");
    b->AddBefore(earlier);
    EXPECT_EQ(root->HasSubKey("P\\c"), earlier);
}

TEST_F(KeyTest, KeyPathOfKeysWithAndWithoutNames)
{
    ozSubKey* direct = root->FindSubKey("Direct", 2);
    EXPECT_EQ(direct->KeyPath(), "Direct");
    ozSubKey* a = root->FindSubKey("A", 2);
    auto* unnamed = new ozSubKey;
    tree.AppendChild(a, nullptr, unnamed);
    char path[ozSubKey::KeyPathCapacity];
    EXPECT_TRUE(unnamed->GetKeyPath(path));
    EXPECT_STREQ(path, "A");

    // A path that would not fit the buffer is refused rather than written past its end.
    std::string component(600, 'k');
    ozSubKey* deep = root->FindSubKey((component + "\\" + component).c_str(), 2);
    ASSERT_NE(deep, nullptr);
    EXPECT_FALSE(deep->GetKeyPath(path));
    EXPECT_STREQ(path, "");
    FILE* file = std::tmpfile();
    EXPECT_FALSE(deep->SaveADM(file));
    EXPECT_TRUE(a->SaveADM(file));
    std::rewind(file);
    char text[16] = {};
    EXPECT_STREQ(std::fgets(text, sizeof text, file), "\"A\"");
    std::fclose(file);
    EXPECT_FALSE(a->SaveADM(nullptr));
}

TEST_F(KeyTest, ValuesAreFoundWithoutRegardToCaseAndRemovedByIdentity)
{
    ozSubKey* key = root->FindSubKey("Env", 2);
    ozSubKey* other = root->FindSubKey("Other", 2);
    ozRegValue* path = key->FindValue("Path");
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(path->SubKey(), key);
    EXPECT_EQ(key->HasValue("PATH"), path);
    EXPECT_EQ(key->FindValue("path"), path);
    EXPECT_EQ(key->Values().Count(), 1);
    EXPECT_EQ(key->FindValue(nullptr), nullptr);

    key->FindValue("Temp");
    ozRegValue* foreign = other->FindValue("Path");
    EXPECT_FALSE(key->RemoveValue(foreign));
    EXPECT_EQ(other->HasValue("Path"), foreign);
    EXPECT_TRUE(key->RemoveValue(path));
    EXPECT_EQ(key->HasValue("Path"), nullptr);
    EXPECT_EQ(key->Values().Count(), 1);
}

}  // namespace
