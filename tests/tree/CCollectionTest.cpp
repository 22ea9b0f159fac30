#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/tree/CCollection.h"

namespace {

std::vector<std::string> g_destroyed;

struct Element {
    explicit Element(std::string n) : name(std::move(n)) {}
    ~Element() { g_destroyed.push_back(name); }
    std::string name;
};

class CollectionTest : public ::testing::Test {
protected:
    void SetUp() override { g_destroyed.clear(); }
};

TEST_F(CollectionTest, KeepsInsertionOrderAndFindsNamesExactly)
{
    CCollection<Element> collection;
    auto* b = new Element("b");
    auto* unnamed = new Element("unnamed");
    auto* a = new Element("a");
    EXPECT_TRUE(collection.Add(b, "Beta"));
    EXPECT_TRUE(collection.Add(unnamed));
    EXPECT_TRUE(collection.Add(a, "Alpha"));
    ASSERT_EQ(collection.Count(), 3);
    EXPECT_EQ(collection.At(0), b);
    EXPECT_EQ(collection.At(1), unnamed);
    EXPECT_EQ(collection.At(2), a);
    EXPECT_EQ(collection.At(3), nullptr);
    EXPECT_EQ(collection.At(-1), nullptr);
    EXPECT_STREQ(collection.NameAt(0), "Beta");
    EXPECT_EQ(collection.NameAt(1), nullptr);
    EXPECT_EQ(collection.Find("Alpha"), a);
    EXPECT_EQ(collection.Find("alpha"), nullptr);
    EXPECT_EQ(collection.Find(nullptr), nullptr);
    EXPECT_STREQ(collection.LastAddedName(), "Alpha");
}

TEST_F(CollectionTest, RefusesADuplicateNameAndDestroysTheRefusedElementWhenOwning)
{
    CCollection<Element> owning;
    auto* first = new Element("first");
    EXPECT_TRUE(owning.Add(first, "x"));
    EXPECT_FALSE(owning.Add(new Element("second"), "x"));
    EXPECT_EQ(owning.Count(), 1);
    EXPECT_EQ(owning.Find("x"), first);
    EXPECT_EQ(g_destroyed, std::vector<std::string>{"second"});

    CCollection<Element> borrowing(false);
    auto kept = std::make_unique<Element>("kept");
    auto refused = std::make_unique<Element>("refused");
    EXPECT_TRUE(borrowing.Add(kept.get(), "x"));
    EXPECT_FALSE(borrowing.Add(refused.get(), "x"));
    EXPECT_TRUE(borrowing.Add(refused.get()));
    EXPECT_TRUE(borrowing.RemoveAt(1));
    EXPECT_TRUE(borrowing.RemoveAt(0));
    EXPECT_EQ(g_destroyed, std::vector<std::string>{"second"});
}

TEST_F(CollectionTest, ManyNamesInOneBucketStayFindableAndRemovable)
{
    CCollection<Element> collection;
    std::vector<std::string> names;
    for (int i = 0; i < 2000; ++i)
        names.push_back("name" + std::to_string(i));
    for (const std::string& name : names)
        ASSERT_TRUE(collection.Add(new Element(name), name.c_str()));
    // Remove every third element from the front, then check the rest are still found.
    for (int pos = collection.Count() - 1; pos >= 0; pos -= 3)
        ASSERT_TRUE(collection.RemoveAt(pos));
    for (int pos = 0; pos < collection.Count(); ++pos) {
        const char* name = collection.NameAt(pos);
        ASSERT_NE(collection.Find(name), nullptr) << name;
        EXPECT_EQ(collection.Find(name)->name, name);
    }
    EXPECT_EQ(static_cast<int>(g_destroyed.size()), 2000 - collection.Count());
}

TEST_F(CollectionTest, RemoveAtDestroysOwnedElementsOfBothKinds)
{
    CCollection<Element> collection;
    collection.Add(new Element("named"), "n");
    collection.Add(new Element("plain"));
    collection.Add(new Element("last"), "l");
    EXPECT_TRUE(collection.RemoveAt(1));
    EXPECT_TRUE(collection.RemoveAt(0));
    EXPECT_FALSE(collection.RemoveAt(5));
    EXPECT_EQ(g_destroyed, (std::vector<std::string>{"plain", "named"}));
    ASSERT_EQ(collection.Count(), 1);
    EXPECT_EQ(collection.Find("n"), nullptr);
    EXPECT_EQ(collection.At(0)->name, "last");
    // Removing the element added last forgets its name; the name can be used again.
    EXPECT_TRUE(collection.RemoveAt(0));
    EXPECT_EQ(collection.LastAddedName(), nullptr);
    EXPECT_TRUE(collection.Add(new Element("again"), "l"));
}

TEST_F(CollectionTest, RemoveAllDropsUnnamedElementsBeforeNamedOnes)
{
    {
        CCollection<Element> collection;
        collection.Add(new Element("named1"), "a");
        collection.Add(new Element("plain1"));
        collection.Add(new Element("named2"), "b");
        collection.Add(new Element("plain2"));
    }
    ASSERT_EQ(g_destroyed.size(), 4u);
    EXPECT_EQ(g_destroyed[0], "plain1");
    EXPECT_EQ(g_destroyed[1], "plain2");
}

}  // namespace
