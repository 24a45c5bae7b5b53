#include "Zyl2/Mox2/Adder/Node.h"

#include "Expectations.h"
#include "OpenDatabase.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace Zyl2::Mox2;
using ModelTests::OpenDatabase;
using Zyl2::Exception::InvalidArguments;
using Zyl2::Exception::InvalidObjectState;
using Zyl2::Exception::KeyNotFound;
using Zyl2Mox::Geometry;
using Zyl2Mox::Group;
using Zyl2Mox::Shape;

Support::Thrown const invalidRootType{3, "Invalid node type for root node", "addRootNode",
                                      "Zyl2/Mox2/Adder/Node", 72};
Support::Thrown const invalidType{3, "Invalid node type", "addNonRootNode", "Zyl2/Mox2/Adder/Node",
                                  86};

Support::Thrown rootIsSet(std::string const& function, int line)
{
    return {17, "Root node properties are already set", function, "Zyl2/Mox/Tree", line};
}

NodeType typeOf(int value)
{
    return static_cast<NodeType>(value);
}

Attributes unsupportedAttribute()
{
    Attributes attributes;
    attributes.set("key", true);
    return attributes;
}

TEST(NodeAdder, AfterARootShapeTheSecondNodeGoesBelowIt)
{
    for (NodeType const type : {NodeType::Group, NodeType::Shape}) {
        OpenDatabase open;
        open.add(NodeType::Shape, "root");
        open.add(type, "below");
        EXPECT_EQ(open.tree().GetReqNode(2).parent, 1U);
        EXPECT_EQ(open.tree().GetReqNode(2).value->GetName(), "below");
    }
    OpenDatabase open;
    open.add(NodeType::Shape, "root");
    Support::expectThrown<InvalidArguments>([&] { open.add(NodeType::RootGroup, "below"); },
                                            invalidType);
}

TEST(NodeAdder, OtherTypesAreNoRoot)
{
    for (int const value : {0, 5, -1, 2147483647}) {
        OpenDatabase open;
        Support::expectThrown<InvalidArguments>([&] { open.add(typeOf(value), "root"); },
                                                invalidRootType);
        EXPECT_EQ(open.tree().GetReqNode(1).value, nullptr);
        EXPECT_EQ(open.tree().GetNodeCount(), 1U);
    }
}

TEST(NodeAdder, RootTypesAndUnknownTypesAreRefusedBelowTheRoot)
{
    OpenDatabase open;
    open.add(NodeType::RootGroup, "root");
    for (int const value : {1, 2, 0, 5, -1}) {
        Support::expectThrown<InvalidArguments>([&] { open.add(typeOf(value), "below"); },
                                                invalidType);
        EXPECT_EQ(open.tree().GetNodeCount(), 1U);
        EXPECT_EQ(open.tree().GetCurrentId(), 1U);
    }
}

TEST(NodeAdder, ARootThatIsSetIsNotSetAgain)
{
    OpenDatabase open;
    open.add(NodeType::RootGroup, "root");
    struct Case
    {
        NodeType type;
        Support::Thrown thrown;
    };
    for (Case const& given : {Case{NodeType::FlaggedRootGroup, rootIsSet("SetRootGroup", 222)},
                              Case{NodeType::RootGroup, rootIsSet("SetRootGroup", 212)},
                              Case{NodeType::Group, rootIsSet("SetRootGroup", 212)},
                              Case{NodeType::Shape, rootIsSet("SetRootShape", 232)}}) {
        Adder::Node adder(given.type, "again", Attributes());
        Support::expectThrown<InvalidObjectState>([&] { adder.addRootNode(open.tree()); },
                                                  given.thrown);
        EXPECT_EQ(open.node<Group>(1)->GetName(), "root");
        EXPECT_EQ(open.tree().GetNodeCount(), 1U);
    }
}

TEST(NodeAdder, AnAttributeThatCanNotBeStoredFailsBeforeAnythingIsAdded)
{
    OpenDatabase open;
    for (NodeType const type : {NodeType::FlaggedRootGroup, NodeType::RootGroup, NodeType::Group}) {
        Support::expectThrown<InvalidArguments>(
            [&] { open.add(type, "root", unsupportedAttribute()); }, ModelTests::unsupportedScalar);
        EXPECT_EQ(open.tree().GetReqNode(1).value, nullptr);
    }
    open.add(NodeType::RootGroup, "root");
    Attributes vector;
    vector.set("key", std::vector<float>{1});
    Support::expectThrown<InvalidArguments>([&] { open.add(NodeType::Group, "below", vector); },
                                            ModelTests::unsupportedVector);
    EXPECT_EQ(open.tree().GetNodeCount(), 1U);
    EXPECT_EQ(open.tree().GetCurrentId(), 1U);
}

TEST(NodeAdder, AttributesAreConvertedBeforeTheRootIsLookedAt)
{
    OpenDatabase open;
    open.add(NodeType::RootGroup, "root");
    open.add(NodeType::Group, "below");
    Adder::Node adder(NodeType::Group, "again", unsupportedAttribute());
    Support::expectThrown<InvalidArguments>([&] { adder.addRootNode(open.tree()); },
                                            ModelTests::unsupportedScalar);
    EXPECT_EQ(open.tree().GetCurrentId(), 2U);
}

TEST(NodeAdder, AnInvalidCursorIsRefusedAndNoRecordMadeUp)
{
    OpenDatabase open;
    open.add(NodeType::RootGroup, "root");
    for (NodeType const type : {NodeType::Group, NodeType::Shape}) {
        // Registering a variable on an unknown id leaves the cursor there.
        EXPECT_THROW(open.tree().SetAndGetIndex(99, "variable", Geometry::VariableType(), 0,
                                                Zyl2Mox::NumericArray(), {}),
                     KeyNotFound);
        EXPECT_EQ(open.tree().GetCurrentId(), 99U);
        Support::expectThrown<KeyNotFound>([&] { open.add(type, "below"); },
                                           ModelTests::currentNodeIsNone);
        EXPECT_EQ(open.tree().GetNodeCount(), 1U);
        EXPECT_EQ(open.tree().GetNextId(), 2U);
    }
}

} // namespace
