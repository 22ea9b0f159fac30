// The code object and the load context, and the policy tree that classes, categories and
// policies build: where nodes go and how a second template merges.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/adm/ozADMCategory.h"
#include "core/adm/ozADMRoot.h"
#include "ozGrammarActionFixture.h"

namespace {

// The tree as text: each node's name, a category's or class's children in braces, a policy's
// parts in brackets.
std::string Outline(ozTreeNode* first)
{
    std::string text;
    for (ozTreeNode* node = first; node != nullptr; node = node->Next()) {
        auto* admNode = static_cast<ozADMNode*>(node);
        text += (text.empty() ? "" : " ") +
                std::string(admNode->Name() != nullptr ? admNode->Name() : "-");
        if (admNode->NodeType() == NodePolicy) {
            const CCollection<ozADMCtrl>& parts = static_cast<ozADMPolicy*>(admNode)->Controls();
            text += "[";
            for (int position = 0; position < parts.Count(); ++position)
                text += (position == 0 ? "" : " ") + std::string(parts.At(position)->Name());
            text += "]";
        } else {
            text += "{" + Outline(node->Down()) + "}";
        }
    }
    return text;
}

class TreeBuildTest : public GrammarActionTest {
protected:
    void SetUp() override
    {
        GrammarActionTest::SetUp();
        ASSERT_TRUE(Prepare());
    }

    std::string Outline() { return ::Outline(Tree().Down()); }
};

TEST_F(GrammarActionTest, CodeObjectIsMadeHandedOutAndLentBack)
{
    ASSERT_TRUE(Prepare());
    auto* code = reinterpret_cast<tTreeCodeHandle*>(GetCodeH(0));
    ASSERT_NE(code, nullptr);
    EXPECT_EQ(std::vector<uint32_t>({code->kind, code->versionMajor, code->versionMinor,
                                     code->reserved, code->modified, code->spare}),
              std::vector<uint32_t>({0, 1, 1, 200, 0, 0}));
    EXPECT_NE(code->tree, nullptr);
    EXPECT_EQ(Context().Code(), nullptr) << "the context forgets what it handed out";
    EXPECT_EQ(GetCodeH(0), 0);

    EXPECT_EQ(SetCodeH(reinterpret_cast<intptr_t>(code)), 1);
    ASSERT_TRUE(Prepare());
    EXPECT_EQ(Context().Code(), code) << "a lent code object is read into, not replaced";
    EXPECT_EQ(ozRecordedErrorCount(), 0);
    // DestroyCode (in TearDown) destroys the lent code object, as the engine's destroy asks.
}

TEST_F(GrammarActionTest, DestroyCodeFreesEverythingLeftByAnUnfinishedLoad)
{
    ASSERT_TRUE(Prepare("[strings]\r\nA=a\r\n"));
    Class("USER");
    Category("Open");
    KeyName("Software\\Open");
    Ok(BeginActionlist(0), "ACTIONLIST");
    Ok(ValueDelete(0), "VALUE DELETE");
    Push("text");

    EXPECT_EQ(DestroyCode(0), 1);
    EXPECT_EQ(Context().Code(), nullptr);
    EXPECT_EQ(Context().Strings(), nullptr);
    EXPECT_EQ(Context().Arguments(), nullptr);
    EXPECT_EQ(Context().KeyNames(), nullptr);
    // The leak checker of the sanitizer build tells whether anything was left behind.
    EXPECT_EQ(DestroyCode(0), 1) << "destroying an empty context is harmless";
}

TEST_F(TreeBuildTest, SameNameOfAnotherKindIsAddedAfterIt)
{
    Class("MACHINE");
    Category("Twin");
    KeyName("Software\\Twin");
    Ok(EndCategory(0), "END CATEGORY");
    Policy("Twin");
    KeyName("Software\\Twin");
    Ok(EndPolicy(0), "END POLICY");
    Category("Twin");
    Ok(EndCategory(0), "END CATEGORY");
    EXPECT_EQ(Outline(), "MACHINE{Twin{} Twin[]}");
}

// Finding the sibling to merge with follows whatever changed the siblings since the last
// category was placed: nodes appended, renamed, removed or inserted by others than the loader.
TEST_F(TreeBuildTest, MergeFollowsChangesMadeToTheSiblings)
{
    auto categories = [](std::initializer_list<const char*> names) {
        for (const char* name : names) {
            Category(name);
            Ok(EndCategory(0), "END CATEGORY");
        }
    };
    auto named = [](const char* name) {
        auto category = std::make_unique<ozADMCategory>();
        category->Name(name);
        return category.release();
    };
    Class("MACHINE");
    categories({"A", "B", "C"});
    auto* machine = static_cast<ozADMNode*>(Tree().GetCurr());
    ASSERT_TRUE(Tree().AddBelowAsLast(named("D")));
    ASSERT_TRUE(Tree().SetCurrentNode(machine));
    categories({"D", "a"});
    EXPECT_EQ(Outline(), "MACHINE{A{} B{} C{} D{} a{}}") << "names compare exactly";

    static_cast<ozADMNode*>(machine->Down()->Next())->Name("R");
    categories({"B", "R"});
    EXPECT_EQ(Outline(), "MACHINE{A{} R{} C{} D{} a{} B{}}");

    ASSERT_TRUE(Tree().SetCurrentNode(machine->Down()->Next()->Next()) && Tree().Delete());
    ASSERT_TRUE(Tree().SetCurrentNode(machine->Down()) && Tree().AddAfter(named(nullptr)));
    ASSERT_TRUE(Tree().SetCurrentNode(machine));
    categories({"A", "C", "R"});
    EXPECT_EQ(Outline(), "MACHINE{A{} -{} R{} C{} R{} D{} a{} B{}}")
        << "a sibling without a name stops the search for a later one of the same name";
}

// Ends without their beginnings, a policy without key, a part outside a policy.
TEST_F(TreeBuildTest, MisplacedConstructs)
{
    struct Case {
        const char* what;
        std::function<void()> setUp;
        intptr_t (*action)(intptr_t);
        int number;  // 0: fails without a number
    };
    const std::vector<Case> cases = {
        {"END POLICY without a key name", [] { Policy("NoKey"); }, EndPolicy, LoadErrorNoKeyName},
        {"END POLICY outside a policy", [] {}, EndPolicy, LoadErrorEndPolicy},
        {"END CATEGORY of a class", [] {}, EndCategory, LoadErrorEndCategory},
        {"PART outside a policy", [] { Push("Stray"); }, CreateCheckbox, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TearDown();
        SetUp();
        Class("MACHINE");
        c.setUp();
        ozResetRecordedErrors();
        EXPECT_EQ(c.action(0), 0);
        EXPECT_EQ(ozRecordedErrorCode(), c.number);
    }
}

}  // namespace
