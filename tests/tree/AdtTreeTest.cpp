#include "Zyl2/Adt/AdtTree.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Zyl2::Exception::KeyNotFound;

struct Payload
{
    std::string name;
};

using PayloadPointer = Payload const*;

struct SameName
{
    using ComparesLookUpKeys = void;

    bool operator()(PayloadPointer left, PayloadPointer right) const
    {
        return left != nullptr && right != nullptr && left->name == right->name;
    }
};

/// Stands for an index of children that finds no memory.
bool lookUpKeysFail = false;

/// Tells how often it was asked, and about which payloads.
struct CountingFunctor
{
    using ComparesLookUpKeys = void;

    std::vector<PayloadPointer>* asked;

    bool operator()(PayloadPointer left, PayloadPointer right) const
    {
        asked->push_back(right);
        return SameName()(left, right);
    }
};

} // namespace

namespace Zyl2Adt {

template <>
struct LookUpKey<PayloadPointer>
{
    static std::string_view Of(PayloadPointer const& payload)
    {
        if (lookUpKeysFail)
            throw std::bad_alloc();
        return payload == nullptr ? std::string_view() : std::string_view(payload->name);
    }
};

} // namespace Zyl2Adt

namespace {

class TestTree : public Zyl2Adt::Tree<PayloadPointer>
{
public:
    using Zyl2Adt::Tree<PayloadPointer>::SetCurrentIdUnchecked;

    /// Adds a child of that name below the current node, and stays where it was.
    IdType AddNamed(std::string const& name)
    {
        IdType const before = GetCurrentId();
        IdType const id = AddChild();
        SetCurrentValue(Own(name));
        SetCurrentIdUnchecked(before);
        return id;
    }

    PayloadPointer Own(std::string const& name)
    {
        payloads_.push_back(std::make_unique<Payload>(Payload{name}));
        return payloads_.back().get();
    }

    void MoveToNamed(std::string const& name)
    {
        Payload const probe{name};
        MoveToChild(&probe, SameName());
    }

private:
    std::vector<std::unique_ptr<Payload>> payloads_;
};

/// A tree of plain numbers, which has no look-up key of its own.
class NumberTree : public Zyl2Adt::Tree<int>
{};

TEST(AdtTree, AFreshTreeHoldsTheRootAlone)
{
    TestTree tree;
    EXPECT_EQ(tree.GetNodeCount(), 1U);
    EXPECT_EQ(tree.GetNextId(), 2U);
    EXPECT_EQ(tree.GetCurrentId(), 1U);
    TestTree::NodeType const& root = tree.GetReqNode(1);
    EXPECT_EQ(root.id, 1U);
    EXPECT_EQ(root.parent, 0U);
    EXPECT_EQ(root.previousSibling, 0U);
    EXPECT_EQ(root.nextSibling, 0U);
    EXPECT_EQ(root.firstChild, 0U);
    EXPECT_EQ(root.lastChild, 0U);
    EXPECT_EQ(root.value, nullptr);
}

TEST(AdtTree, TheFirstChildGetsId2AndBecomesCurrent)
{
    TestTree tree;
    EXPECT_EQ(tree.AddChild(), 2U);
    EXPECT_EQ(tree.GetCurrentId(), 2U);
    EXPECT_EQ(tree.GetNextId(), 3U);
    TestTree::NodeType const& child = tree.GetCurrentNode();
    EXPECT_EQ(child.id, 2U);
    EXPECT_EQ(child.parent, 1U);
    EXPECT_EQ(child.previousSibling, 0U);
    EXPECT_EQ(child.nextSibling, 0U);
    EXPECT_EQ(child.value, nullptr);
}

TEST(AdtTree, ThreeChildrenOfTheRootAreSiblingsInTheOrderOfTheirIds)
{
    TestTree tree;
    EXPECT_EQ(tree.AddNamed("a"), 2U);
    EXPECT_EQ(tree.AddNamed("b"), 3U);
    EXPECT_EQ(tree.AddNamed("c"), 4U);
    EXPECT_EQ(tree.GetReqNode(1).firstChild, 2U);
    EXPECT_EQ(tree.GetReqNode(1).lastChild, 4U);
    EXPECT_EQ(tree.GetReqNode(2).previousSibling, 0U);
    EXPECT_EQ(tree.GetReqNode(2).nextSibling, 3U);
    EXPECT_EQ(tree.GetReqNode(3).previousSibling, 2U);
    EXPECT_EQ(tree.GetReqNode(3).nextSibling, 4U);
    EXPECT_EQ(tree.GetReqNode(4).previousSibling, 3U);
    EXPECT_EQ(tree.GetReqNode(4).nextSibling, 0U);
}

TEST(AdtTree, NoNodeCanBeMadeCurrentButIsNotThere)
{
    TestTree tree;
    tree.SetCurrentId(0);
    EXPECT_EQ(tree.GetCurrentId(), 0U);
    Support::expectThrown<KeyNotFound>(
        [&] { tree.GetCurrentNode(); },
        {14, "Key not found", "GetCurrentNode", "Zyl2/Adt/AdtTree", 219});
}

TEST(AdtTree, TheNextFreeIdIsRefusedAndTheCursorStays)
{
    TestTree tree;
    tree.AddChild();
    Support::expectThrown<KeyNotFound>(
        [&] { tree.SetCurrentId(3); },
        {14, "Key not found", "SetCurrentId", "Zyl2/Adt/AdtTree", 210});
    EXPECT_EQ(tree.GetCurrentId(), 2U);
    tree.SetCurrentId(1);
    EXPECT_EQ(tree.GetCurrentId(), 1U);
}

TEST(AdtTree, ARecordThatIsNotThereCantBeRead)
{
    TestTree const tree;
    Support::expectThrown<KeyNotFound>(
        [&] { tree.GetReqNode(2); }, {14, "Key not found", "GetReqNode", "Zyl2/Adt/AdtTree", 254});
    EXPECT_THROW(tree.GetReqNode(0), KeyNotFound);
}

TEST(AdtTree, NothingIsFoundWhenNoChildMatchesAndTheCursorStays)
{
    TestTree tree;
    tree.AddNamed("a");
    Support::expectThrown<KeyNotFound>(
        [&] { tree.MoveToNamed("b"); },
        {14, "Key not found", "MoveToChild", "Zyl2/Adt/AdtTree", 106});
    EXPECT_EQ(tree.GetCurrentId(), 1U);
}

TEST(AdtTree, AMatchThatIsNoChildOfTheCurrentNodeIsIgnored)
{
    TestTree tree;
    unsigned int const group = tree.AddNamed("group");
    tree.SetCurrentId(group);
    unsigned int const grandchild = tree.AddNamed("a");
    tree.SetCurrentId(1);
    EXPECT_THROW(tree.MoveToNamed("a"), KeyNotFound);
    EXPECT_EQ(tree.GetCurrentId(), 1U);
    tree.SetCurrentId(group);
    EXPECT_THROW(tree.MoveToNamed("group"), KeyNotFound);
    tree.MoveToNamed("a");
    EXPECT_EQ(tree.GetCurrentId(), grandchild);
}

TEST(AdtTree, OfSeveralChildrenThatMatchTheOneOfTheLowestIdIsChosen)
{
    TestTree tree;
    tree.AddNamed("other");
    unsigned int const oldest = tree.AddNamed("twin");
    tree.AddNamed("twin");
    tree.AddNamed("twin");
    tree.MoveToNamed("twin");
    EXPECT_EQ(tree.GetCurrentId(), oldest);
}

TEST(AdtTree, TheLowestIdWinsEvenWhenItGotItsValueLast)
{
    TestTree tree;
    unsigned int const first = tree.AddChild();
    tree.SetCurrentId(1);
    unsigned int const second = tree.AddNamed("twin");
    tree.SetCurrentId(1);
    tree.MoveToNamed("twin");
    EXPECT_EQ(tree.GetCurrentId(), second);
    tree.SetCurrentId(first);
    tree.SetCurrentValue(tree.Own("twin"));
    tree.SetCurrentId(1);
    tree.MoveToNamed("twin");
    EXPECT_EQ(tree.GetCurrentId(), first);
}

TEST(AdtTree, AChildThatTheFunctorRefusesIsPassedOver)
{
    TestTree tree;
    tree.AddNamed("twin");
    unsigned int const second = tree.AddNamed("twin");
    PayloadPointer const wanted = tree.GetReqNode(second).value;
    Payload const probe{"twin"};
    tree.MoveToChild(&probe,
                     [wanted](PayloadPointer, PayloadPointer right) { return right == wanted; });
    EXPECT_EQ(tree.GetCurrentId(), second);
}

TEST(AdtTree, TheFunctorGetsTheGivenValueFirst)
{
    TestTree tree;
    tree.AddNamed("a");
    Payload const probe{"a"};
    PayloadPointer left = nullptr;
    PayloadPointer right = nullptr;
    tree.MoveToChild(&probe, [&](PayloadPointer given, PayloadPointer held) {
        left = given;
        right = held;
        return true;
    });
    EXPECT_EQ(left, &probe);
    EXPECT_EQ(right, tree.GetReqNode(2).value);
}

TEST(AdtTree, ARecordWithoutValueMatchesNothing)
{
    TestTree tree;
    tree.AddChild();
    tree.SetCurrentId(1);
    EXPECT_THROW(tree.MoveToNamed(""), KeyNotFound);
}

TEST(AdtTree, BelowNoNodeTheRootIsFound)
{
    TestTree tree;
    tree.SetCurrentValue(tree.Own("root"));
    tree.SetCurrentId(0);
    tree.MoveToNamed("root");
    EXPECT_EQ(tree.GetCurrentId(), 1U);
}

TEST(AdtTree, NamesOfAnyBytesAreTold)
{
    TestTree tree;
    std::string const allBytes = [] {
        std::string bytes;
        for (int byte = 0; byte < 256; ++byte)
            bytes.push_back(static_cast<char>(byte));
        return bytes;
    }();
    std::vector<std::string> const names{"",
                                         std::string(1, '\0'),
                                         std::string(2, '\0'),
                                         std::string("a\0b", 3),
                                         std::string("a\0c", 3),
                                         "a",
                                         "/",
                                         "\x1e",
                                         "\xff\xfe",
                                         allBytes};
    std::vector<unsigned int> ids;
    ids.reserve(names.size());
    for (std::string const& name : names)
        ids.push_back(tree.AddNamed(name));
    for (std::size_t name = 0; name < names.size(); ++name) {
        tree.SetCurrentId(1);
        tree.MoveToNamed(names[name]);
        EXPECT_EQ(tree.GetCurrentId(), ids[name]) << name;
    }
}

TEST(AdtTree, ALookUpAsksAboutTheChildrenOfThatNameOnly)
{
    TestTree tree;
    for (int group = 0; group < 100; ++group) {
        tree.SetCurrentId(1);
        unsigned int const id = tree.AddNamed("group" + std::to_string(group));
        tree.SetCurrentId(id);
        for (int shape = 0; shape < 100; ++shape)
            tree.AddNamed("shape" + std::to_string(shape));
    }
    tree.SetCurrentId(1);
    std::vector<PayloadPointer> asked;
    Payload const group{"group57"};
    tree.MoveToChild(&group, CountingFunctor{&asked});
    EXPECT_EQ(asked.size(), 1U);
    Payload const shape{"shape99"};
    tree.MoveToChild(&shape, CountingFunctor{&asked});
    EXPECT_EQ(asked.size(), 2U);
    EXPECT_EQ(tree.GetCurrentNode().value->name, "shape99");
    Payload const missing{"shape100"};
    EXPECT_THROW(tree.MoveToChild(&missing, CountingFunctor{&asked}), KeyNotFound);
    EXPECT_EQ(asked.size(), 2U);
}

TEST(AdtTree, AnOnlyChildIsFoundAndIsStillFoundOnceItHasSiblings)
{
    TestTree tree;
    unsigned int const only = tree.AddNamed("only");
    tree.MoveToNamed("only");
    EXPECT_EQ(tree.GetCurrentId(), only);
    tree.SetCurrentId(1);
    EXPECT_THROW(tree.MoveToNamed("second"), KeyNotFound);
    unsigned int const second = tree.AddNamed("second");
    unsigned int const third = tree.AddNamed("only");
    tree.MoveToNamed("second");
    EXPECT_EQ(tree.GetCurrentId(), second);
    tree.SetCurrentId(1);
    tree.MoveToNamed("only");
    EXPECT_EQ(tree.GetCurrentId(), only);
    EXPECT_NE(third, only);
}

TEST(AdtTree, AnOnlyChildThatGetsItsValueAfterASiblingCameIsFound)
{
    TestTree tree;
    unsigned int const first = tree.AddChild();
    tree.SetCurrentId(1);
    tree.AddNamed("second");
    tree.SetCurrentId(first);
    tree.SetCurrentValue(tree.Own("first"));
    tree.SetCurrentId(1);
    tree.MoveToNamed("first");
    EXPECT_EQ(tree.GetCurrentId(), first);
}

TEST(AdtTree, AnOnlyChildOfAnotherNameIsNotAskedAbout)
{
    TestTree tree;
    tree.AddNamed("a");
    std::vector<PayloadPointer> asked;
    Payload const other{"b"};
    EXPECT_THROW(tree.MoveToChild(&other, CountingFunctor{&asked}), KeyNotFound);
    EXPECT_TRUE(asked.empty());
}

TEST(AdtTree, AChildThatCannotBeAddedLeavesTheTreeAsItWas)
{
    TestTree tree;
    unsigned int const only = tree.AddNamed("only");
    lookUpKeysFail = true;
    EXPECT_THROW(tree.AddChild(), std::bad_alloc);
    lookUpKeysFail = false;
    EXPECT_EQ(tree.GetNodeCount(), 2U);
    EXPECT_EQ(tree.GetCurrentId(), 1U);
    EXPECT_EQ(tree.GetReqNode(1).lastChild, only);
    EXPECT_EQ(tree.AddNamed("second"), 3U);
    tree.MoveToNamed("only");
    EXPECT_EQ(tree.GetCurrentId(), only);
    tree.SetCurrentId(1);
    tree.MoveToNamed("second");
    EXPECT_EQ(tree.GetCurrentId(), 3U);
}

TEST(AdtTree, NoChildCanBeAddedToNoNode)
{
    TestTree tree;
    tree.SetCurrentId(0);
    Support::expectThrown<KeyNotFound>(
        [&] { tree.AddChild(); }, {14, "Key not found", "GetCurrentNode", "Zyl2/Adt/AdtTree", 219});
    tree.SetCurrentIdUnchecked(7);
    EXPECT_THROW(tree.AddChild(), KeyNotFound);
    EXPECT_EQ(tree.GetNodeCount(), 1U);
}

TEST(AdtTree, AFunctorThatMatchesBySomethingElseIsAskedAboutEveryChild)
{
    Payload const probe{"another name"};
    for (int const siblings : {0, 1, 5}) {
        SCOPED_TRACE(siblings);
        TestTree tree;
        unsigned int const below = tree.AddNamed("before");
        for (int sibling = 0; sibling < siblings; ++sibling)
            tree.AddNamed("sibling");
        unsigned int const last = tree.GetReqNode(1).lastChild;
        PayloadPointer const wanted = tree.GetReqNode(last).value;
        std::vector<PayloadPointer> asked;
        auto const isWanted = [&](PayloadPointer left, PayloadPointer right) {
            EXPECT_EQ(left, &probe);
            asked.push_back(right);
            return right == wanted;
        };
        tree.MoveToChild(&probe, isWanted);
        EXPECT_EQ(tree.GetCurrentId(), last);
        EXPECT_EQ(asked.size(), static_cast<std::size_t>(siblings) + 1);
        EXPECT_EQ(asked.front(), tree.GetReqNode(below).value);
        EXPECT_THROW(tree.MoveToChild(&probe, isWanted), KeyNotFound) << "it has no children";
        tree.SetCurrentIdUnchecked(99);
        EXPECT_THROW(tree.MoveToChild(&probe, isWanted), KeyNotFound) << "there is no such node";
    }
}

TEST(AdtTree, AFunctorThatMatchesBySomethingElseFindsTheRootBelowNoNode)
{
    TestTree tree;
    tree.AddNamed("child");
    tree.SetCurrentId(0);
    Payload const probe{"x"};
    tree.MoveToChild(&probe, [](PayloadPointer, PayloadPointer right) { return right == nullptr; });
    EXPECT_EQ(tree.GetCurrentId(), 1U);
}

TEST(AdtTree, WithoutALookUpKeyTheChildrenAreAskedInIdOrder)
{
    NumberTree tree;
    for (int const number : {7, 8, 8, 9}) {
        tree.SetCurrentId(1);
        tree.AddChild();
        tree.SetCurrentValue(number);
    }
    tree.SetCurrentId(1);
    std::vector<int> asked;
    tree.MoveToChild(8, [&asked](int left, int right) {
        asked.push_back(right);
        return left == right;
    });
    EXPECT_EQ(tree.GetCurrentId(), 3U);
    EXPECT_EQ(asked, (std::vector<int>{7, 8}));
}

TEST(AdtTree, AValueThatMoveToChildWouldNotFindCantBeAssigned)
{
    using Found = decltype(std::declval<TestTree&>().GetCurrentNode());
    EXPECT_FALSE((std::is_assignable_v<decltype((std::declval<Found>().value)), PayloadPointer>));
}

TEST(AdtTree, AValueCantBeGivenToNoNode)
{
    TestTree tree;
    tree.SetCurrentId(0);
    Support::expectThrown<KeyNotFound>(
        [&] { tree.SetCurrentValue(tree.Own("a")); },
        {14, "Key not found", "GetCurrentNode", "Zyl2/Adt/AdtTree", 219});
}

} // namespace
