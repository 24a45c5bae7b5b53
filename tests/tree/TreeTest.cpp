#include "Zyl2/Mox/Tree.h"

#include "Zyl2/Mox/Group.h"
#include "Zyl2/Mox/NodesWithSameName.h"
#include "Zyl2/Mox/Shape.h"
#include "Zyl2/Mox/VirtualNodesWithSameName.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using Zyl2::Exception::InvalidObjectState;
using Zyl2::Exception::KeyNotFound;
using Zyl2Mox::ElementCode;
using Zyl2Mox::Geometry;
using Zyl2Mox::Group;
using Zyl2Mox::Node;
using Zyl2Mox::NumericArray;
using Zyl2Mox::Shape;
using Zyl2Mox::Tree;
using Zyl2Util::AttributeList;
using Zyl2Util::AttributeValue;

constexpr auto Result = static_cast<Geometry::VariableType>(12);
constexpr auto OtherResult = static_cast<Geometry::VariableType>(13);

NumericArray Floats(std::size_t count, std::uint8_t width)
{
    return {nullptr, count * 4, width, ElementCode::Float};
}

template <typename Kind>
Kind& NodeOf(Tree& tree, unsigned int id)
{
    return dynamic_cast<Kind&>(*tree.GetReqNode(id).value);
}

/// A root group "r" with a shape "s": geometry 3.
class TreeWithShape : public testing::Test
{
protected:
    TreeWithShape()
    {
        tree.SetRootGroup("r", {});
        tree.MoveToOrAddShape("s");
    }

    std::uint64_t Register(std::string const& name, std::uint64_t position,
                           AttributeList const& attributes = {})
    {
        return tree.SetAndGetIndex(3, name, Result, position, Floats(6, 3), attributes);
    }

    Geometry& geometry() { return NodeOf<Geometry>(tree, 3); }

    Tree tree;
};

using TreeLink = TreeWithShape;
using TreeLinkDeathTest = TreeWithShape;
using TreeVariable = TreeWithShape;

/// Tells how often it was asked.
struct CountingNames : Zyl2Mox::VirtualNodesWithSameName
{
    explicit CountingNames(int* count) : calls(count) {}

    bool operator()(Node const* left, Node const* right) const
    {
        ++*calls;
        return VirtualNodesWithSameName::operator()(left, right);
    }

    int* calls;
};

/// Says when it is destroyed.
class WatchedNode : public Node
{
public:
    explicit WatchedNode(int& destroyed) : Node("watched"), destroyed_(&destroyed) {}
    WatchedNode(WatchedNode const&) = delete;
    WatchedNode& operator=(WatchedNode const&) = delete;
    ~WatchedNode() override { ++*destroyed_; }

private:
    int* destroyed_;
};

TEST(Tree, ANewTreeMakesRandomNumbersRepeatable)
{
    std::srand(0);
    int const first = std::rand(); // NOLINT(cert-msc30-c, cert-msc50-cpp)
    std::rand();                   // NOLINT(cert-msc30-c, cert-msc50-cpp)
    Tree const tree;
    EXPECT_EQ(std::rand(), first); // NOLINT(cert-msc30-c, cert-msc50-cpp)
}

TEST(Tree, DestroysItsNodes)
{
    int destroyed = 0;
    {
        Tree tree;
        tree.AddNode(std::make_unique<WatchedNode>(destroyed));
        tree.AddNode(std::make_unique<WatchedNode>(destroyed));
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 2);
}

TEST(Tree, ARootShapeHasNoGeometry)
{
    Tree tree;
    tree.AddChild();
    tree.SetRootShape("s");
    EXPECT_EQ(tree.GetCurrentId(), 1U);
    EXPECT_EQ(NodeOf<Shape>(tree, 1).GetName(), "s");
    EXPECT_EQ(tree.GetNodeCount(), 2U);
    EXPECT_EQ(tree.GetReqNode(2).value, nullptr);
}

TEST(Tree, ASecondRootIsRefusedAndTheFirstIsKept)
{
    Tree tree;
    tree.SetRootGroup("first", {});
    auto const refused = [](char const* function, int line) {
        return Support::Thrown{17, "Root node properties are already set", function,
                               "Zyl2/Mox/Tree", line};
    };
    AttributeList const attributes{{"a", AttributeValue::FromInteger(1)}};
    tree.AddChild();
    Support::expectThrown<InvalidObjectState>([&] { tree.SetRootGroup("second", attributes); },
                                              refused("Zyl2Mox::Tree::SetRootGroup", 212));
    EXPECT_EQ(tree.GetCurrentId(), 1U);
    Support::expectThrown<InvalidObjectState>([&] { tree.SetRootGroup("second", attributes, 1); },
                                              refused("Zyl2Mox::Tree::SetRootGroup", 222));
    Support::expectThrown<InvalidObjectState>([&] { tree.SetRootShape("second"); },
                                              refused("Zyl2Mox::Tree::SetRootShape", 232));
    EXPECT_EQ(NodeOf<Group>(tree, 1).GetName(), "first");
    EXPECT_EQ(NodeOf<Group>(tree, 1).GetFlag(), 0U);
    EXPECT_TRUE(NodeOf<Group>(tree, 1).GetAttributes().empty());
    EXPECT_EQ(tree.GetNodeCount(), 2U);
}

TEST(Tree, AGroupIsAddedOnceAndMovedToAfterwards)
{
    Tree tree;
    tree.MoveToOrAddGroup("a");
    EXPECT_EQ(tree.GetCurrentId(), 2U);
    EXPECT_EQ(tree.GetNodeCount(), 2U);
    NodeOf<Group>(tree, 2).SetFlag(9);
    tree.SetCurrentId(1);
    tree.MoveToOrAddGroup("a");
    EXPECT_EQ(tree.GetCurrentId(), 2U);
    EXPECT_EQ(tree.GetNodeCount(), 2U);
    EXPECT_EQ(NodeOf<Group>(tree, 2).GetFlag(), 9U);
}

TEST(Tree, GroupsOfTheSameNameBelowOtherNodesAreOthers)
{
    Tree tree;
    tree.MoveToOrAddGroup("a");
    tree.MoveToOrAddGroup("a");
    EXPECT_EQ(tree.GetCurrentId(), 3U);
    EXPECT_EQ(tree.GetReqNode(3).parent, 2U);
    tree.SetCurrentId(1);
    tree.MoveToOrAddGroup("b");
    tree.MoveToOrAddGroup("a");
    EXPECT_EQ(tree.GetCurrentId(), 5U);
}

TEST(Tree, AShapeOfTheSameNameIsNotTakenForTheGroup)
{
    Tree tree;
    tree.MoveToOrAddShape("a");
    tree.SetCurrentId(1);
    tree.MoveToOrAddGroup("a");
    EXPECT_EQ(tree.GetCurrentId(), 4U);
    EXPECT_EQ(tree.GetCurrentNode().value->GetType(), "Group");
    tree.SetCurrentId(1);
    tree.MoveToOrAddShape("a");
    EXPECT_EQ(tree.GetCurrentId(), 3U);
}

TEST(Tree, AShapeOnAFreshRootAddsShapeAndGeometryOnce)
{
    Tree tree;
    tree.MoveToOrAddShape("s");
    EXPECT_EQ(tree.GetCurrentId(), 3U);
    EXPECT_EQ(tree.GetNodeCount(), 3U);
    EXPECT_EQ(NodeOf<Shape>(tree, 2).GetName(), "s");
    EXPECT_EQ(NodeOf<Geometry>(tree, 3).GetName(), "s");
    EXPECT_EQ(tree.GetReqNode(2).parent, 1U);
    EXPECT_EQ(tree.GetReqNode(3).parent, 2U);
    tree.SetCurrentId(1);
    tree.MoveToOrAddShape("s");
    EXPECT_EQ(tree.GetCurrentId(), 3U);
    EXPECT_EQ(tree.GetNodeCount(), 3U);
}

TEST(Tree, AShapeWithoutGeometryGetsOne)
{
    Tree tree;
    tree.AddNode(std::make_unique<Shape>("s"));
    tree.AddNode(std::make_unique<Geometry>("other"));
    tree.SetCurrentId(1);
    tree.MoveToOrAddShape("s");
    EXPECT_EQ(tree.GetCurrentId(), 4U);
    EXPECT_EQ(tree.GetReqNode(4).parent, 2U);
    EXPECT_EQ(NodeOf<Geometry>(tree, 4).GetName(), "s");
    EXPECT_EQ(tree.GetNodeCount(), 4U);
}

TEST(Tree, ALookUpAmongManyChildrenAsksAboutOne)
{
    Tree tree;
    for (int child = 0; child < 1000; ++child) {
        tree.SetCurrentId(1);
        tree.MoveToOrAddGroup("group" + std::to_string(child));
    }
    tree.SetCurrentId(1);
    Node probe("group987");
    int calls = 0;
    tree.MoveToChild(&probe, CountingNames{&calls});
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(tree.GetCurrentNode().value->GetName(), "group987");
}

TEST(Tree, AFailedLookUpByNameTypeAndVersionSaysWhere)
{
    Tree tree;
    tree.MoveToOrAddShape("a");
    tree.SetCurrentId(1);
    Group probe("a", {});
    Support::expectThrown<KeyNotFound>(
        [&] { tree.MoveToChild(&probe, Zyl2Mox::NodesWithSameName()); },
        {14, "Key not found", "MoveToChild", "Zyl2/Adt/AdtTree", 106});
    EXPECT_EQ(tree.GetCurrentId(), 1U);
}

TEST(Tree, NothingIsFoundByTheNameOfNoNode)
{
    Tree tree;
    tree.MoveToOrAddGroup("");
    tree.SetCurrentId(1);
    EXPECT_THROW(tree.MoveToChild(nullptr, Zyl2Mox::VirtualNodesWithSameName()), KeyNotFound);
    EXPECT_EQ(tree.GetCurrentId(), 1U);
}

TEST(Tree, ARecordThatIsGivenNoNodeIsStillFreeForOne)
{
    Tree tree;
    tree.AddChild();
    tree.SetCurrentValue(nullptr);
    EXPECT_EQ(tree.GetCurrentNode().value, nullptr);
    Group group("a", {});
    tree.SetCurrentValue(&group);
    tree.SetCurrentId(1);
    tree.MoveToChild(&group, Zyl2Mox::VirtualNodesWithSameName());
    EXPECT_EQ(tree.GetCurrentId(), 2U);
}

TEST(TreeNodeId, APathOfAnotherRootIsNotFound)
{
    Tree tree;
    tree.SetRootGroup("r", {});
    tree.MoveToOrAddGroup("a");
    for (char const* path : {"/x/a", "r/a", "a", "", "/", "//r/a"}) {
        tree.SetCurrentId(2);
        EXPECT_EQ(tree.getNodeId(path, "/"), 0U) << path;
        EXPECT_EQ(tree.GetCurrentId(), 1U) << path;
    }
}

TEST(TreeNodeId, APathOfTheRootAloneIsOutOfRange)
{
    Tree tree;
    tree.SetRootGroup("r", {});
    tree.MoveToOrAddGroup("a");
    try {
        tree.getNodeId("/r", "/");
        FAIL() << "nothing was thrown";
    } catch (std::out_of_range const& exception) {
        EXPECT_EQ(std::string(exception.what()).find("basic_string::substr"), 0U);
    }
    EXPECT_EQ(tree.GetCurrentId(), 1U);
}

TEST(TreeNodeId, DeepPathsAreResolvedNameByName)
{
    Tree tree;
    tree.SetRootGroup("r", {});
    tree.MoveToOrAddGroup("a");
    tree.MoveToOrAddGroup("b");
    tree.MoveToOrAddShape("s");
    EXPECT_EQ(tree.getNodeId("/r/a/b", "/"), 3U);
    EXPECT_EQ(tree.getNodeId("/r/a/b/s", "/"), 4U);
    EXPECT_EQ(tree.getNodeId("/r/a/b/s/s", "/"), 5U);
    EXPECT_EQ(tree.getNodeId("/r/b", "/"), 0U);
    EXPECT_EQ(tree.getNodeId("/r/a/x/s", "/"), 0U);
    EXPECT_EQ(tree.GetCurrentId(), 1U);
}

TEST(TreeNodeId, OfSeveralChildrenOfANameTheOldestIsFoundWhateverItsKind)
{
    Tree tree;
    tree.SetRootGroup("r", {});
    tree.MoveToOrAddShape("a");
    tree.SetCurrentId(1);
    tree.MoveToOrAddGroup("a");
    EXPECT_EQ(tree.getNodeId("/r/a", "/"), 2U);
}

TEST(TreeNodeId, AnEmptyNameMatchesANodeWithoutNameOnly)
{
    Tree tree;
    tree.SetRootGroup("r", {});
    tree.MoveToOrAddGroup("a");
    EXPECT_EQ(tree.getNodeId("/r/", "/"), 0U);
    EXPECT_EQ(tree.getNodeId("/r/a/", "/"), 0U);
    EXPECT_EQ(tree.getNodeId("/r//a", "/"), 0U);
    tree.MoveToOrAddGroup("");
    EXPECT_EQ(tree.getNodeId("/r/", "/"), 3U);
    EXPECT_EQ(tree.getNodeId("/r//a", "/"), 0U);
    tree.SetCurrentId(3);
    tree.MoveToOrAddGroup("a");
    EXPECT_EQ(tree.getNodeId("/r//a", "/"), 4U);
}

TEST(TreeNodeId, WhatFollowsTheRootsNameIsSkippedByTheLengthOfTheSeparator)
{
    Tree tree;
    tree.SetRootGroup("r", {});
    tree.MoveToOrAddGroup("a");
    EXPECT_EQ(tree.getNodeId("/rxa", "/"), 2U);
}

TEST(TreeNodeId, SeparatorsOfSeveralCharactersAreTakenWhole)
{
    Tree tree;
    tree.SetRootGroup("r", {});
    tree.MoveToOrAddGroup("a:b");
    tree.MoveToOrAddGroup("c");
    EXPECT_EQ(tree.getNodeId("::r::a:b::c", "::"), 3U);
    EXPECT_THROW(tree.getNodeId("::r:", "::"), std::out_of_range);
}

TEST(TreeNodeId, AnEmptySeparatorEndsToo)
{
    Tree tree;
    tree.SetRootGroup("r", {});
    tree.MoveToOrAddGroup("a");
    EXPECT_EQ(tree.getNodeId("ra", ""), 0U);
    EXPECT_EQ(tree.getNodeId("r", ""), 0U);
    tree.MoveToOrAddGroup("");
    EXPECT_EQ(tree.getNodeId("r", ""), 0U);
    EXPECT_EQ(tree.GetCurrentId(), 1U);
}

TEST(TreeNodeId, ATreeWhoseRootHasNoNodeKnowsNoPath)
{
    Tree tree;
    tree.MoveToOrAddGroup("a");
    EXPECT_EQ(tree.getNodeId("/", "/"), 0U);
    EXPECT_EQ(tree.getNodeId("//a", "/"), 0U);
    EXPECT_EQ(tree.GetCurrentId(), 1U);
}

TEST_F(TreeVariable, TheIndexPacksTheNodeIdLowAndTheVariableHigh)
{
    EXPECT_EQ(Register("a", 10), 3U);
    EXPECT_EQ(Register("b", 20), (std::uint64_t(1) << 32U) + 3);
    EXPECT_EQ(Register("c", 30), (std::uint64_t(2) << 32U) + 3);
    EXPECT_EQ(tree.GetCurrentId(), 3U);
}

TEST_F(TreeVariable, RegisteringFillsTheVariable)
{
    tree.SetAndGetIndex(3, "u", OtherResult, 1234567890123U,
                        NumericArray(nullptr, 24, 3, ElementCode::UnsignedInt),
                        {{"Unit", AttributeValue::FromText("mm")},
                         {"DataType", AttributeValue::FromText("x")},
                         {"Category", AttributeValue::FromText("Vibration")}});
    Geometry::VarStruct const& variable = geometry().GetVariable(0);
    EXPECT_EQ(variable.name, "u");
    EXPECT_EQ(variable.type, OtherResult);
    EXPECT_TRUE(variable.vibration);
    EXPECT_EQ(variable.attributes.size(), 2U);
    EXPECT_EQ(variable.attributes.at("Unit").GetText(), "mm");
    EXPECT_EQ(variable.array.kind, ElementCode::UnsignedInt);
    EXPECT_EQ(variable.array.valueCount, 6);
    EXPECT_EQ(variable.array.width, 3U);
    EXPECT_FALSE(variable.linked);
    ASSERT_EQ(geometry().GetDatasets().size(), 1U);
    EXPECT_EQ(geometry().GetDatasets().at("u"), 1234567890123U);
}

TEST_F(TreeVariable, TheSameNameReusesTheVariableAndOverwritesThePosition)
{
    Register("a", 10);
    std::uint64_t const first = Register("u", 20, {{"a", AttributeValue::FromInteger(1)}});
    EXPECT_EQ(tree.SetAndGetIndex(3, "u", OtherResult, 30, Floats(4, 1),
                                  {{"b", AttributeValue::FromInteger(2)}}),
              first);
    EXPECT_EQ(geometry().GetVariables().size(), 2U);
    EXPECT_EQ(geometry().GetDatasets().at("u"), 30U);
    Geometry::VarStruct const& variable = geometry().GetVariable(1);
    EXPECT_EQ(variable.type, OtherResult);
    EXPECT_EQ(variable.array.valueCount, 4);
    EXPECT_EQ(variable.array.width, 1U);
    EXPECT_EQ(variable.attributes.size(), 2U);
}

TEST_F(TreeVariable, ANodeThatIsNoGeometryGivesZeroAndBecomesCurrent)
{
    for (unsigned int const id : {1U, 2U}) {
        tree.SetCurrentId(3);
        EXPECT_EQ(tree.SetAndGetIndex(id, "u", Result, 0, Floats(1, 1), {}), 0U);
        EXPECT_EQ(tree.GetCurrentId(), id);
    }
}

TEST_F(TreeVariable, ARecordWithoutNodeGivesZero)
{
    unsigned int const id = tree.AddChild();
    tree.SetCurrentId(1);
    EXPECT_EQ(tree.SetAndGetIndex(id, "u", Result, 0, Floats(1, 1), {}), 0U);
    EXPECT_EQ(tree.GetCurrentId(), id);
}

TEST_F(TreeVariable, AnUnknownIdIsRefusedAndTheCursorIsLeftThere)
{
    for (unsigned int const id : {0U, 4U, 4294967295U}) {
        Support::expectThrown<KeyNotFound>(
            [&] { tree.SetAndGetIndex(id, "u", Result, 0, Floats(1, 1), {}); },
            {14, "Key not found", "GetCurrentNode", "Zyl2/Adt/AdtTree", 219});
        EXPECT_EQ(tree.GetCurrentId(), id);
    }
    EXPECT_EQ(tree.GetNodeCount(), 3U);
}

TEST_F(TreeVariable, BelowAnUnknownIdNothingIsFoundAndNothingIsAdded)
{
    for (unsigned int const id : {0U, 4U, 4294967295U}) {
        EXPECT_THROW(tree.SetAndGetIndex(id, "u", Result, 0, Floats(1, 1), {}), KeyNotFound);
        EXPECT_THROW(tree.MoveToOrAddGroup("new"), KeyNotFound);
        EXPECT_EQ(tree.GetCurrentId(), id);
    }
    EXPECT_EQ(tree.GetNodeCount(), 3U);
}

TEST_F(TreeLink, ALinkedVariableNamesItsSourceAndLosesItsAttributes)
{
    Register("a", 10);
    Register("u", 20, {{"Category", AttributeValue::FromText("Vibration")}});
    tree.SetCurrentId(1);
    tree.SetLink({3, 1}, {7, 9});
    EXPECT_EQ(tree.GetCurrentId(), 3U);
    Geometry::VarStruct const& variable = geometry().GetVariable(1);
    EXPECT_TRUE(variable.linked);
    EXPECT_EQ(variable.linkedNode, 7U);
    EXPECT_EQ(variable.linkedVariable, 9U);
    EXPECT_TRUE(variable.attributes.empty());
    EXPECT_TRUE(variable.vibration);
    EXPECT_EQ(variable.array.valueCount, 6);
    EXPECT_EQ(geometry().GetDatasets().at("u"), 20U);
    EXPECT_FALSE(geometry().GetVariable(0).linked);
}

TEST_F(TreeLink, RegisteringALinkedVariableAgainClearsTheLink)
{
    Register("u", 20);
    tree.SetLink({3, 0}, {7, 9});
    Register("u", 30);
    Geometry::VarStruct const& variable = geometry().GetVariable(0);
    EXPECT_FALSE(variable.linked);
    EXPECT_EQ(variable.linkedNode, 0U);
    EXPECT_EQ(variable.linkedVariable, 0U);
    EXPECT_EQ(geometry().GetDatasets().at("u"), 30U);
}

TEST_F(TreeLink, ATargetThatWasNeverHandedOutIsRefused)
{
    tree.SetCurrentId(2);
    Support::expectThrown<KeyNotFound>(
        [&] {
            tree.SetLink({4, 0}, {3, 0});
        },
        {14, "Key not found", "SetCurrentId", "Zyl2/Adt/AdtTree", 210});
    EXPECT_EQ(tree.GetCurrentId(), 2U);
}

TEST_F(TreeLink, NoNodeIsNoTarget)
{
    Support::expectThrown<KeyNotFound>(
        [&] {
            tree.SetLink({0, 0}, {3, 0});
        },
        {14, "Key not found", "GetCurrentNode", "Zyl2/Adt/AdtTree", 219});
}

TEST_F(TreeLink, AVariableThatIsNotThereIsRefusedInsteadOfReachedPastTheEnd)
{
    Register("u", 20);
    EXPECT_THROW(tree.SetLink({3, 1}, {3, 0}), std::out_of_range);
}

TEST_F(TreeLinkDeathTest, ATargetThatIsNoGeometryEndsTheProcess)
{
    EXPECT_DEATH(tree.SetLink({2, 0}, {3, 0}),
                 "Zyl2/Mox/Tree:480: .*SetLink.*Assertion `0 != geom_ptr' failed");
    EXPECT_DEATH(tree.SetLink({1, 0}, {3, 0}), "Zyl2/Mox/Tree:480: ");
}

} // namespace
