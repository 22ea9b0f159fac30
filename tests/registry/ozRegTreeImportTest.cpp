// Reading registry keys into the model, on both builds: a hive file made for the test on
// POSIX, keys written into the registry first on Windows.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/registry/CRegistryKey.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozRootKey.h"
#include "core/registry/ozSubKey.h"
#include "tests/support/ozTestRegistry.h"

namespace {

using namespace std::string_literals;

std::string Bytes(const ozRegValue* value)
{
    return std::string(reinterpret_cast<const char*>(value->Data()), value->Size());
}

std::string Path(const std::string& below)
{
    return std::string(ozTestRegistry::Base) + "\\" + below;
}

// A test tree reachable as a subclass, for the protected value copy.
class ImportingTree : public ozRegTree {
public:
    using ozRegTree::AddValueFromReg;
};

class RegistryImportTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        registry.SetString("App", "Name", "ozADM");
        registry.SetString("App", "Home", "%HOMEDRIVE%\\x", REG_EXPAND_SZ);
        registry.SetDword("App", "Count", 0x01020304);
        registry.SetValue("App", "Big", REG_DWORD_BIG_ENDIAN, "\x01\x02\x03\x04"s);
        registry.SetMultiString("App", "List", {"a", "b"});
        registry.SetValue("App", "Blob", REG_BINARY, "\x00\xFF"s);
        registry.SetValue("App", "Empty", REG_BINARY, "");
        registry.SetDword("App\\Child", "Level", 2);
        registry.AddKey("App\\Child\\Leaf");
        registry.AddKey("Bare");
        registry.Publish();
    }

    ozTestRegistry registry;
    ImportingTree tree;
};

TEST_F(RegistryImportTest, RecursiveReadCopiesKeysAndEveryValueType)
{
    ASSERT_TRUE(
        tree.AddFromRegistry(HKEY_CURRENT_USER, Path("App").c_str(), nullptr, true, nullptr));
    ozSubKey* app = tree.HasKey(HKEY_CURRENT_USER, Path("App").c_str());
    ASSERT_NE(app, nullptr);
    EXPECT_TRUE(app->Save());
    EXPECT_EQ(app->Root(), 1u);
    ozSubKey* leaf = tree.HasKey(HKEY_CURRENT_USER, Path("App\\Child\\Leaf").c_str());
    ASSERT_NE(leaf, nullptr);
    EXPECT_TRUE(leaf->Save());
    EXPECT_EQ(leaf->Values().Count(), 0);
    EXPECT_FALSE(tree.HasKey(HKEY_CURRENT_USER, "Software")->Save());

    const struct {
        const char* name;
        unsigned long type;
        std::string bytes;
    } expected[] = {{"Name", REG_SZ, "ozADM\0"s},
                    {"Home", REG_EXPAND_SZ, "%HOMEDRIVE%\\x\0"s},
                    {"Count", REG_DWORD, "\x04\x03\x02\x01"s},
                    {"Big", REG_DWORD_BIG_ENDIAN, "\x01\x02\x03\x04"s},
                    {"List", REG_MULTI_SZ, "a\0b\0\0"s},
                    {"Blob", REG_BINARY, "\x00\xFF"s},
                    {"Empty", REG_BINARY, ""s}};
    for (const auto& value : expected) {
        ozRegValue* copied = app->HasValue(value.name);
        ASSERT_NE(copied, nullptr) << value.name;
        EXPECT_EQ(copied->Type(), value.type) << value.name;
        EXPECT_EQ(Bytes(copied), value.bytes) << value.name;
    }
    EXPECT_EQ(app->Values().Count(), 7);
}

TEST_F(RegistryImportTest, ReadingAgainOverwritesValuesInPlace)
{
    ASSERT_TRUE(
        tree.AddFromRegistry(HKEY_CURRENT_USER, Path("App").c_str(), nullptr, true, nullptr));
    ozSubKey* app = tree.HasKey(HKEY_CURRENT_USER, Path("App").c_str());
    ozRegValue* name = app->HasValue("name");
    name->SetString("changed");
    name->Op(OpChange);
    name->SetData2(REG_SZ, 4, reinterpret_cast<const unsigned char*>("old"));
    name->RIT(RitM);

    ASSERT_TRUE(
        tree.AddFromRegistry(HKEY_CURRENT_USER, Path("App").c_str(), nullptr, true, nullptr));
    EXPECT_EQ(app->HasValue("Name"), name);
    EXPECT_EQ(Bytes(name), "ozADM\0"s);
    EXPECT_EQ(name->Op(), OpInsert);
    EXPECT_EQ(name->RIT(), RitR);
    EXPECT_EQ(name->Size2(), 4u);  // the second datum is left as it was
    EXPECT_EQ(app->Values().Count(), 7);
    EXPECT_EQ(tree.Down()->Next(), nullptr);
}

TEST_F(RegistryImportTest, NonRecursiveReadTakesTheKeyOrOneValueByName)
{
    ASSERT_TRUE(
        tree.AddFromRegistry(HKEY_CURRENT_USER, Path("App").c_str(), nullptr, false, nullptr));
    ozSubKey* app = tree.HasKey(HKEY_CURRENT_USER, Path("App").c_str());
    EXPECT_TRUE(app->Save());
    EXPECT_EQ(app->Values().Count(), 0);
    EXPECT_EQ(app->Down(), nullptr);

    app->Save(false);
    ASSERT_TRUE(
        tree.AddFromRegistry(HKEY_CURRENT_USER, Path("App").c_str(), "COUNT", false, nullptr));
    ASSERT_EQ(app->Values().Count(), 1);
    EXPECT_STREQ(app->Values().At(0)->Name(), "Count");
    EXPECT_FALSE(app->Save());

    EXPECT_TRUE(
        tree.AddFromRegistry(HKEY_CURRENT_USER, Path("Bare").c_str(), "Missing", false, nullptr));
    ozSubKey* bare = tree.HasKey(HKEY_CURRENT_USER, Path("Bare").c_str());
    ASSERT_NE(bare, nullptr);
    EXPECT_EQ(bare->Values().Count(), 0);
    EXPECT_FALSE(tree.AddFromRegistry(HKEY_CURRENT_USER, nullptr, nullptr, true, nullptr));
}

TEST_F(RegistryImportTest, UnreachableMachineThrowsFromTheConnection)
{
    try {
        CRegistryKey key(HKEY_LOCAL_MACHINE, "Software", KEY_READ, "\\\\no-such-machine-here");
        FAIL() << "no exception for an unreachable machine";
    } catch (const CRegistryKey::Exception& e) {
        EXPECT_EQ(e.GetWhere(), "CRegistryKey::CRegistryKey() - RegConnectRegistry");
        EXPECT_NE(e.GetError(), 0u);
    }
}

TEST_F(RegistryImportTest, NamedMachineReadsItsOwnRegistry)
{
    if (registry.MachineName() == nullptr)
        GTEST_SKIP() << "only the local registry can be named here";
    ASSERT_TRUE(tree.AddFromRegistry(HKEY_CURRENT_USER, Path("App\\Child").c_str(), "Level", false,
                                     registry.MachineName()));
    EXPECT_NE(tree.HasKey(HKEY_CURRENT_USER, Path("App\\Child").c_str())->HasValue("Level"),
              nullptr);
}

TEST_F(RegistryImportTest, IteratorsEnumerateAndShareTheirKey)
{
    CRegistryKey app(HKEY_CURRENT_USER, Path("App").c_str());
    std::vector<std::string> subKeys;
    for (auto it = app.BeginSubkeyIteration(); it != app.EndSubkeyIteration(); ++it)
        subKeys.push_back(it.Name());
    EXPECT_EQ(subKeys, std::vector<std::string>{"Child"});

    CRegistryKey::ValueIterator values = app.BeginValueIteration();
    CRegistryKey::ValueIterator copy = values;
    while (values != app.EndValueIteration())
        ++values;
    EXPECT_FALSE(copy->Name().empty()) << "the copy still stands on the first value";

    CRegistryKey bare(HKEY_CURRENT_USER, Path("Bare").c_str());
    EXPECT_EQ(bare.BeginValueIteration(), bare.EndValueIteration());
    EXPECT_EQ(bare.BeginSubkeyIteration(), bare.EndSubkeyIteration());
}

TEST_F(RegistryImportTest, BuffersGrowForEntriesLongerThanWhenIterationBegan)
{
    if (!registry.IsLive())
        GTEST_SKIP() << "a hive file does not change while it is read";
    registry.SetString("Bare", "a", "x");
    CRegistryKey bare(HKEY_CURRENT_USER, Path("Bare").c_str());
    auto value = bare.BeginValueIteration();  // buffers sized for the short value
    registry.SetString("Bare", "b-with-a-longer-name", std::string(5000, 'y'));
    ++value;
    ASSERT_NE(value, bare.EndValueIteration());
    EXPECT_EQ(value->Name(), "b-with-a-longer-name");
    EXPECT_EQ(value->AsString(), std::string(5000, 'y'));

    registry.AddKey("Bare\\s");
    auto subKey = bare.BeginSubkeyIteration();
    registry.AddKey("Bare\\t-with-a-much-longer-name");
    ++subKey;
    ASSERT_NE(subKey, bare.EndSubkeyIteration());
    EXPECT_EQ(subKey.Name(), "t-with-a-much-longer-name");
}

TEST(RegistryValueTest, ConversionsAreRefusedForOtherTypes)
{
    const unsigned char number[] = {0x01, 0x02, 0x03, 0x04};
    CRegistryKey::Value little("n", REG_DWORD, number, 4);
    CRegistryKey::Value big("n", REG_DWORD_BIG_ENDIAN, number, 4);
    CRegistryKey::Value text("t", REG_SZ, reinterpret_cast<const BYTE*>("ab\0c"), 4);
    EXPECT_EQ(little.AsDWORD(), 0x04030201u);
    EXPECT_EQ(big.AsDWORD(), 0x01020304u);
    EXPECT_EQ(text.AsString(), "ab");
    EXPECT_THROW(little.AsString(), CRegistryKey::Value::Exception);
    EXPECT_THROW(CRegistryKey::Value("s", REG_DWORD, number, 2).AsDWORD(),
                 CRegistryKey::Value::Exception);
    try {
        text.AsDWORD();
        FAIL() << "a string converted to a number";
    } catch (const CRegistryKey::Exception& e) {
        EXPECT_EQ(e.GetWhere(), "CRegistryKey::Value::Exception");
        EXPECT_EQ(e.GetError(), 87u);
    }
}

}  // namespace
