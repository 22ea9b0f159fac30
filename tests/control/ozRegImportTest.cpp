// The operations an importer uses to create keys, values and data in the control's trees.
#include <gtest/gtest.h>

#include <memory>

#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegImport.h"
#include "core/registry/ozSubKey.h"

namespace {

class OpenImporter : public ozRegImport {
public:
    bool ImportUserProfile(const char*) override { return true; }
    bool ImportMachineProfile(const char*) override { return true; }
    using ozRegImport::_CreateData;
    using ozRegImport::_CreateKey;
    using ozRegImport::_CreateValue;
};

TEST(RegImport, KeysGoToTheTreeOfTheirRoot)
{
    tTreeCodeHandle code;
    OpenImporter importer;
    EXPECT_EQ(importer._CreateKey(1, "Software\\X"), nullptr) << "no code object";
    EXPECT_EQ(importer._CreateData(8), nullptr);
    importer.CodeHandle(&code);

    ozSubKey* user = importer._CreateKey(1, "Software\\X");
    ASSERT_NE(user, nullptr);
    EXPECT_EQ(user, importer._CreateKey(1, "software\\x")) << "found again, in any case";
    EXPECT_EQ(user, code.tree->UsrTree().HasKey(HKEY_CURRENT_USER, "Software\\X"));
    ozSubKey* machine = importer._CreateKey(2, "Software\\X");
    EXPECT_EQ(machine, code.tree->MacTree().HasKey(HKEY_LOCAL_MACHINE, "Software\\X"));
    EXPECT_NE(importer._CreateKey(0, "Classes"), nullptr);
    EXPECT_NE(code.tree->MacTree().HasKey(HKEY_CLASSES_ROOT, "Classes"), nullptr)
        << "every root but the current user's is the machine tree's";
    EXPECT_EQ(importer._CreateKey(1, nullptr), nullptr);

    std::unique_ptr<unsigned char[]> data(importer._CreateData(8));
    EXPECT_NE(data, nullptr);
}

TEST(RegImport, ValuesAndTheMachineItemException)
{
    tTreeCodeHandle code;
    OpenImporter importer;
    importer.CodeHandle(&code);

    ozRegValue* value = importer._CreateValue(2, "Software\\V", "Name", RitR);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->Root(), 2u);
    EXPECT_EQ(value, importer._CreateValue(2, "Software\\V", "name", RitR)) << "found again";
    EXPECT_EQ(value->RIT(), RitR) << "the item type is the caller's to set";

    ozRegValue* machineItem = importer._CreateValue(1, "Software\\M", "Item", RitM);
    ASSERT_NE(machineItem, nullptr);
    EXPECT_EQ(machineItem->Root(), 2u) << "root 1 becomes 2";
    ozSubKey* key = code.tree->UsrTree().HasKey(HKEY_LOCAL_MACHINE, "Software\\M");
    ASSERT_NE(key, nullptr) << "below the machine's root key inside the user tree";
    EXPECT_EQ(key->HasValue("Item"), machineItem);

    EXPECT_EQ(importer._CreateValue(2, nullptr, "Name", RitR), nullptr);
    EXPECT_EQ(importer._CreateValue(2, "Software\\V", nullptr, RitR), nullptr);
}

}  // namespace
