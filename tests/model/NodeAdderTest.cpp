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

Attributes oneAttribute()
{
    Attributes attributes;
    attributes.set("key", 5);
    return attributes;
}

Attributes unsupportedAttribute()
{
    Attributes attributes;
    attributes.set("key", true);
    return attributes;
}

void expectDefaultTransform(Group const& group)
{
    EXPECT_EQ(group.GetTranslation(), (std::array<float, 3>{0, 0, 0}));
    EXPECT_EQ(group.GetRotation(), (std::array<float, 4>{0, 0, 1, 0}));
    EXPECT_EQ(group.GetScale(), (std::array<float, 3>{1, 1, 1}));
}

void expectDefaultMaterial(Zyl2Mox::Material const& material)
{
    using Color = Zyl2Mox::Material::Color;
    EXPECT_EQ(material.GetName(), "");
    EXPECT_EQ(material.GetDiffuseColor(), (Color{0.8F, 0.8F, 0.8F, 1.0F}));
    EXPECT_EQ(material.GetSpecularColor(), (Color{0.0F, 0.0F, 0.0F, 1.0F}));
    EXPECT_EQ(material.GetEmissiveColor(), (Color{0.0F, 0.0F, 0.0F, 1.0F}));
    Color const ambient{0.16F, 0.16F, 0.16F, 0.2F};
    for (std::size_t component = 0; component < ambient.size(); ++component)
        EXPECT_FLOAT_EQ(material.GetAmbientColor()[component], ambient[component]);
    EXPECT_EQ(material.GetTransparency(), 0.0F);
    EXPECT_EQ(material.GetShininess(), 0.2F);
    EXPECT_EQ(material.GetFlag(), 1U);
}

TEST(NodeAdder, NeedsAFileThatIsOpenForWriting)
{
    Database database;
    Adder::Node adder(NodeType::Group, "root", Attributes());
    Support::expectThrown<InvalidObjectState>([&] { adder.update(database); },
                                              ModelTests::fileNotOpen);
    database.tree = std::make_shared<Zyl2Mox::Tree>();
    Support::expectThrown<InvalidObjectState>([&] { adder.update(database); },
                                              ModelTests::notInWriteMode);
    EXPECT_EQ(database.tree->GetReqNode(1).value, nullptr);
}

TEST(NodeAdder, TheFirstNodeOfEachGroupTypeFillsTheRoot)
{
    for (NodeType const type : {NodeType::FlaggedRootGroup, NodeType::RootGroup, NodeType::Group}) {
        OpenDatabase open;
        EXPECT_EQ(open.add(type, "root", oneAttribute()), 1U);
        EXPECT_EQ(open.tree().GetNodeCount(), 1U);
        EXPECT_EQ(open.tree().GetCurrentId(), 1U);
        auto const* const group = open.node<Group>(1);
        ASSERT_NE(group, nullptr);
        EXPECT_EQ(group->GetName(), "root");
        ASSERT_EQ(group->GetAttributes().size(), 1U);
        EXPECT_EQ(group->GetAttributes().at("key").GetInteger(), 5U);
        expectDefaultTransform(*group);
        EXPECT_EQ(group->GetFlag(), type == NodeType::FlaggedRootGroup ? 1 : 0);
    }
}

TEST(NodeAdder, AShapeAsTheFirstNodeFillsTheRootWithoutGeometryAndDropsItsAttributes)
{
    OpenDatabase open;
    EXPECT_EQ(open.add(NodeType::Shape, "root", unsupportedAttribute()), 1U);
    EXPECT_EQ(open.tree().GetNodeCount(), 1U);
    auto const* const shape = open.node<Shape>(1);
    ASSERT_NE(shape, nullptr);
    EXPECT_EQ(shape->GetName(), "root");
    expectDefaultMaterial(shape->GetMaterial());
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

TEST(NodeAdder, AGroupGoesBelowTheCurrentNodeAndBecomesCurrent)
{
    OpenDatabase open;
    open.add(NodeType::RootGroup, "root");
    EXPECT_EQ(open.add(NodeType::Group, "a", oneAttribute()), 2U);
    EXPECT_EQ(open.add(NodeType::Group, "b"), 3U);
    EXPECT_EQ(open.tree().GetCurrentId(), 3U);
    EXPECT_EQ(open.tree().GetReqNode(2).parent, 1U);
    EXPECT_EQ(open.tree().GetReqNode(3).parent, 2U);
    auto const* const group = open.node<Group>(2);
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->GetName(), "a");
    EXPECT_EQ(group->GetAttributes().at("key").GetInteger(), 5U);
    EXPECT_EQ(group->GetFlag(), 0);
    expectDefaultTransform(*group);
}

TEST(NodeAdder, AShapeBelowTheRootIsKnownByItsGeometryWhichBecomesCurrent)
{
    OpenDatabase open;
    open.add(NodeType::RootGroup, "root");
    EXPECT_EQ(open.add(NodeType::Shape, "shape", unsupportedAttribute()), 3U);
    EXPECT_EQ(open.tree().GetCurrentId(), 3U);
    auto const* const shape = open.node<Shape>(2);
    ASSERT_NE(shape, nullptr);
    EXPECT_EQ(shape->GetName(), "shape");
    expectDefaultMaterial(shape->GetMaterial());
    auto const* const geometry = open.node<Geometry>(3);
    ASSERT_NE(geometry, nullptr);
    EXPECT_EQ(geometry->GetName(), "shape");
    EXPECT_TRUE(geometry->GetVariables().empty());
    EXPECT_EQ(open.tree().GetReqNode(2).parent, 1U);
    EXPECT_EQ(open.tree().GetReqNode(2).firstChild, 3U);
    EXPECT_EQ(open.tree().GetReqNode(2).lastChild, 3U);
    EXPECT_EQ(open.tree().GetReqNode(3).parent, 2U);
}

TEST(NodeAdder, ANodeIsAddedAnewWhenThereIsOneOfItsName)
{
    OpenDatabase open;
    open.add(NodeType::RootGroup, "root");
    EXPECT_EQ(open.addShapeBelowRoot("same"), 3U);
    EXPECT_EQ(open.addShapeBelowRoot("same"), 5U);
    EXPECT_EQ(open.tree().GetReqNode(1).lastChild, 4U);
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

TEST(NodeAdder, ArgumentsAreCopied)
{
    OpenDatabase open;
    std::string name = "root";
    Attributes attributes = oneAttribute();
    Adder::Node adder(NodeType::Group, name, attributes);
    name = "other";
    attributes.set("key", 6);
    adder.update(open.database);
    EXPECT_EQ(adder.getId(), 1U);
    EXPECT_EQ(open.node<Group>(1)->GetName(), "root");
    EXPECT_EQ(open.node<Group>(1)->GetAttributes().at("key").GetInteger(), 5U);
}

} // namespace
