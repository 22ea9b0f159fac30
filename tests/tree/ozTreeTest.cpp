#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/tree/ozTree.h"

namespace {

// A node that records its name and, when destroyed, that it was.
struct NamedNode : ozTreeNode {
    explicit NamedNode(std::string n, std::vector<std::string>* destroyed = nullptr)
        : name(std::move(n)), destroyedLog(destroyed)
    {
    }
    ~NamedNode() override
    {
        if (destroyedLog != nullptr)
            destroyedLog->push_back(name);
    }

    std::string name;
    std::vector<std::string>* destroyedLog;
};

std::string NameOf(ozTreeNode* node)
{
    return node != nullptr ? static_cast<NamedNode*>(node)->name : "(null)";
}

// A tree with top-level nodes a and d, a having children b and c:
//   a
//     b
//     c
//   d
class TreeTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        tree.AddBelow(a = new NamedNode("a", &destroyed));
        tree.AddBelowAsLast(b = new NamedNode("b", &destroyed));
        tree.AddAfter(c = new NamedNode("c", &destroyed));
        tree.SetCurrentNode(a);
        tree.AddAfter(d = new NamedNode("d", &destroyed));
    }

    // The pre-order walk as a string: "a(b c) d". A node is marked "!" when its links disagree
    // with its place: only a first child holds the link to its parent, and Up() finds it anyway.
    std::string Shape(ozTreeNode* first, ozTreeNode* parent) const
    {
        std::string out;
        ozTreeNode* prev = nullptr;
        for (ozTreeNode* node = first; node != nullptr; prev = node, node = node->Next()) {
            out += (out.empty() ? "" : " ") + NameOf(node);
            if (node->Prev() != prev || node->Up() != parent ||
                node->ParentLink() != (prev == nullptr ? parent : nullptr))
                out += "!";
            if (node->Down() != nullptr)
                out += "(" + Shape(node->Down(), node) + ")";
        }
        return out;
    }
    std::string Shape() const { return Shape(tree.Down(), const_cast<ozTree*>(&tree)); }

    std::vector<std::string> destroyed;
    ozTree tree;
    NamedNode *a = nullptr, *b = nullptr, *c = nullptr, *d = nullptr;
};

TEST_F(TreeTest, InsertionsAndIsolationLinkTheNodeInPlace)
{
    ASSERT_EQ(Shape(), "a(b c) d");
    EXPECT_TRUE(a->AddBelow(new NamedNode("x")));
    EXPECT_FALSE(a->AddBelow(nullptr));
    EXPECT_EQ(Shape(), "a(x b c) d");
    tree.SetCurrentNode(a);
    EXPECT_TRUE(tree.AddBefore(new NamedNode("y")));  // the tree is a's parent
    EXPECT_EQ(NameOf(tree.GetCurr()), "y");
    EXPECT_TRUE(c->AddBefore(new NamedNode("z")));
    EXPECT_EQ(Shape(), "y a(x b z c) d");
    EXPECT_TRUE(tree.AppendChild(a, c, new NamedNode("t")));
    EXPECT_TRUE(tree.AppendChild(d, nullptr, new NamedNode("u")));
    EXPECT_EQ(NameOf(tree.GetCurr()), "u");
    tree.SetCurrentNode(a);
    EXPECT_TRUE(tree.AddAbove(new NamedNode("w")));
    EXPECT_TRUE(c->AddAbove(new NamedNode("v")));
    EXPECT_EQ(Shape(), "y w(a(x b z v(c) t)) d(u)");
    ozTreeNode* x = a->Down();
    EXPECT_TRUE(x->Isolate());  // the next sibling takes the parent link
    EXPECT_EQ(Shape(), "y w(a(b z v(c) t)) d(u)");
    EXPECT_EQ(x->Next(), nullptr);
    EXPECT_EQ(x->Up(), nullptr);
    delete x;

    EXPECT_EQ(c->GetTree(), &tree);
    NamedNode free("free");
    NamedNode other("other");
    EXPECT_FALSE(free.AddBefore(&other));
    EXPECT_EQ(free.Up(), nullptr);
    EXPECT_EQ(free.GetTree(), &free);
}

TEST_F(TreeTest, CursorMovesOnlyWhereThereIsANode)
{
    EXPECT_EQ(tree.GetRoot(), a);
    EXPECT_EQ(tree.GetPrev(), nullptr);
    EXPECT_EQ(tree.GetCurr(), a);
    EXPECT_EQ(tree.GetUp(), nullptr);  // never onto the tree object
    EXPECT_EQ(tree.GetDown(), b);
    EXPECT_EQ(tree.GetNext(), c);
    EXPECT_EQ(tree.GetNext(), nullptr);
    EXPECT_EQ(tree.GetDown(), nullptr);
    EXPECT_EQ(tree.GetCurr(), c);
    EXPECT_EQ(tree.GetUp(), a);

    NamedNode stranger("stranger");
    EXPECT_FALSE(tree.SetCurrentNode(&stranger));
    EXPECT_FALSE(tree.SetCurrentNode(nullptr));
    EXPECT_EQ(tree.GetCurr(), a);

    ozTree empty;  // nothing to add beside or above, nothing to remove
    EXPECT_FALSE(empty.AddAfter(&stranger) || empty.AddBefore(&stranger) ||
                 empty.AddAbove(&stranger) || empty.Delete());
    EXPECT_EQ(empty.GetRoot(), nullptr);
    EXPECT_EQ(empty.IsolateNode(), nullptr);
}

TEST_F(TreeTest, AddBelowAsLastAppendsToTheCurrentNodeButToTheFrontWithoutOne)
{
    tree.SetCurrentNode(a);
    EXPECT_TRUE(tree.AddBelowAsLast(new NamedNode("x")));
    EXPECT_EQ(Shape(), "a(b c x) d");
    EXPECT_EQ(NameOf(tree.GetCurr()), "x");

    // Appending again goes after children linked in by other means since.
    c->AddAfter(new NamedNode("y"));  // in the middle
    tree.SetCurrentNode(a);
    auto* z = new NamedNode("z");
    EXPECT_TRUE(tree.AddBelowAsLast(z));
    z->AddAfter(new NamedNode("w"));  // at the end, without the tree
    tree.SetCurrentNode(a);
    EXPECT_TRUE(tree.AddBelowAsLast(new NamedNode("v")));
    EXPECT_EQ(Shape(), "a(b c y x z w v) d");

    ozTree other;
    EXPECT_TRUE(other.AddBelowAsLast(new NamedNode("p")));
    EXPECT_TRUE(other.AddBelowAsLast(new NamedNode("q")));  // below p, the current node
    EXPECT_EQ(Shape(other.Down(), &other), "p(q)");
}

// Which node becomes current after removing the current one.
TEST_F(TreeTest, RemovalMovesTheCursorToTheSuccessor)
{
    tree.AddBelow(nullptr);  // no effect
    auto* e = new NamedNode("e", &destroyed);
    c->AddAfter(e);  // a(b c e) d

    tree.SetCurrentNode(c);  // middle sibling: next one
    EXPECT_TRUE(tree.Delete());
    EXPECT_EQ(tree.GetCurr(), e);
    tree.SetCurrentNode(e);  // last of several: previous one
    EXPECT_TRUE(tree.Delete());
    EXPECT_EQ(tree.GetCurr(), b);
    tree.SetCurrentNode(b);  // only child: its parent
    ozTreeNode* isolated = tree.IsolateNode();
    EXPECT_EQ(isolated, b);
    EXPECT_EQ(tree.GetCurr(), a);
    delete isolated;
    EXPECT_EQ(destroyed, (std::vector<std::string>{"c", "e", "b"}));

    tree.SetCurrentNode(d);
    EXPECT_TRUE(tree.Delete());
    EXPECT_EQ(tree.GetCurr(), a);
    EXPECT_TRUE(tree.Delete());  // the last top-level node: no successor
    EXPECT_EQ(tree.GetCurr(), nullptr);
    EXPECT_EQ(tree.Down(), nullptr);
}

TEST_F(TreeTest, DeleteDestroysTheWholeSubtree)
{
    tree.SetCurrentNode(a);
    EXPECT_TRUE(tree.Delete());
    // The derived destructor logs before the base destroys the children.
    EXPECT_EQ(destroyed, (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(Shape(), "d");
}

struct Visits {
    std::vector<std::string> names;
    std::string stopAt;
};

bool Record(ozTreeNode* node, void* context)
{
    auto* visits = static_cast<Visits*>(context);
    visits->names.push_back(NameOf(node));
    return NameOf(node) != visits->stopAt;
}

TEST_F(TreeTest, ExecuteWalksPreOrderAndStopsAtTheFirstFalse)
{
    Visits all;
    EXPECT_TRUE(tree.Execute(Record, &all));
    EXPECT_EQ(all.names, (std::vector<std::string>{"a", "b", "c", "d"}));

    Visits stopped{{}, "b"};
    EXPECT_FALSE(tree.Execute(Record, &stopped));
    EXPECT_EQ(stopped.names, (std::vector<std::string>{"a", "b"}));

    ozTree empty;
    EXPECT_TRUE(empty.Execute([](ozTreeNode*) { return false; }));
}

// A parent's generation stays over appends at the end and changes with every other change
// among its children; a moved node's own generation changes too.
TEST_F(TreeTest, GenerationOfTheParentChangesWithEveryChangeButAppendsAtTheEnd)
{
    unsigned long aBefore = a->Generation(), bBefore = b->Generation(), dBefore = d->Generation();
    c->AddAfter(new NamedNode("x"));
    d->AddBelow(new NamedNode("y"));
    EXPECT_EQ(a->Generation(), aBefore);
    EXPECT_EQ(d->Generation(), dBefore);
    b->AddAfter(new NamedNode("z"));  // inserted in the middle
    EXPECT_NE(a->Generation(), aBefore);
    EXPECT_EQ(b->Generation(), bBefore);

    const std::vector<void (*)(ozTreeNode*, ozTreeNode*)> changes = {
        [](ozTreeNode* parent, ozTreeNode*) { parent->AddBelow(new NamedNode("front")); },
        [](ozTreeNode*, ozTreeNode* child) { delete child->Next(); },  // z, in the middle
        [](ozTreeNode*, ozTreeNode* child) { child->AddAbove(new NamedNode("above")); },
        [](ozTreeNode* parent, ozTreeNode*) { parent->ChildrenChanged(); },
    };
    for (size_t i = 0; i < changes.size(); ++i) {
        aBefore = a->Generation();
        changes[i](a, b);
        EXPECT_NE(a->Generation(), aBefore) << "change " << i;
    }
    bBefore = b->Generation();
    b->Isolate();
    EXPECT_NE(b->Generation(), bBefore);
    delete b;
}

TEST(TreeWalkTest, ManySiblingsDoNotExhaustTheStack)
{
    ozTree tree;
    ozTreeNode* last = nullptr;
    for (int i = 0; i < 300000; ++i) {
        auto* node = new ozTreeNode;
        tree.AppendChild(&tree, last, node);
        last = node;
    }
    long visited = 0;
    EXPECT_TRUE(tree.Execute(
        [](ozTreeNode*, void* count) {
            ++*static_cast<long*>(count);
            return true;
        },
        &visited));
    EXPECT_EQ(visited, 300000);
    EXPECT_TRUE(tree.Save(static_cast<FILE*>(nullptr)));  // the base writes nothing
}

}  // namespace
