#include "Zyl2/Mox2/Modifier/NodeData.h"

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
using Zyl2::Exception::OutOfBounds;
using Zyl2::Exception::TemplateSpecializationNotDefined;
using Zyl2Mox::Group;
using Zyl2Mox::Material;
using Zyl2Mox::Shape;
using Color = Material::Color;
using Floats = std::vector<float>;

Support::Thrown const outOfBounds{11, "Out of bounds error", "NodeData::update",
                                  "Zyl2/Mox2/Modifier/NodeData", 67};
Support::Thrown const invalidProperties{3, "Invalid properties", "NodeData",
                                        "Zyl2/Mox2/Modifier/NodeData", 117};
Support::Thrown const emptyNode{3, "empty node", "notNull", "Zyl2/Mox2/Modifier/NodeData", 133};
Support::Thrown const wrongValueType{19, "Template specialization not defined", "ValueGetter",
                                     "Zyl2/Variant/Visitor/ValueGetter", 40};

Support::Thrown invalidSize(std::string const& function, std::string const& file, int line)
{
    return {3, "invalid array size", function, file, line};
}

/// A database with a root group (id 1), a group (id 2), and in it a shape (id 3) with its geometry
/// (id 4).
class NodeDataTest : public testing::Test
{
protected:
    static constexpr unsigned int GroupId = 2;
    static constexpr unsigned int ShapeId = 3;
    static constexpr unsigned int GeometryId = 4;

    NodeDataTest()
    {
        open.add(NodeType::RootGroup, "root");
        open.add(NodeType::Group, "group");
        open.add(NodeType::Shape, "shape");
    }

    void set(unsigned int id, NodeProperties const& properties,
             Attributes const& attributes = Attributes())
    {
        Modifier::NodeData(id, properties, attributes).update(open.database);
    }

    template <typename T>
    void setOne(unsigned int id, PropertyType type, T const& value)
    {
        NodeProperties properties;
        properties.set(type, value);
        set(id, properties);
    }

    Group& group() { return *open.node<Group>(GroupId); }
    Material& material() { return open.node<Shape>(ShapeId)->GetMaterial(); }

    OpenDatabase open;
};

TEST_F(NodeDataTest, ZeroAndIdsPastTheLastNodeAreOutOfBounds)
{
    for (unsigned int const id : {0U, 5U, 4294967295U})
        Support::expectThrown<OutOfBounds>([&] { set(id, NodeProperties()); }, outOfBounds);
    EXPECT_EQ(open.tree().GetCurrentId(), GeometryId);
}

TEST_F(NodeDataTest, AGeometryLeadsToItsShapeWhichBecomesCurrent)
{
    setOne(GeometryId, PropertyType::Transparency, 0.5F);
    EXPECT_EQ(material().GetTransparency(), 0.5F);
    EXPECT_EQ(open.tree().GetCurrentId(), ShapeId);
}

TEST(NodeData, ARootWithoutANodeTakesNoProperty)
{
    OpenDatabase fresh;
    NodeProperties properties;
    properties.set(PropertyType::Translation, Floats{1, 2, 3});
    Modifier::NodeData command(1, properties, Attributes());
    Support::expectThrown<InvalidArguments>([&] { command.update(fresh.database); }, emptyNode);
}

TEST(NodeData, AGeometryAtTheRootHasNoShapeAboveIt)
{
    Zyl2Mox::Geometry geometry("root");
    OpenDatabase fresh;
    fresh.tree().SetCurrentValue(&geometry);
    NodeProperties properties;
    properties.set(PropertyType::Shininess, 1.0F);
    Modifier::NodeData command(1, properties, Attributes());
    Support::expectThrown<InvalidArguments>([&] { command.update(fresh.database); }, emptyNode);
    EXPECT_EQ(fresh.tree().GetCurrentId(), 1U);
}

TEST_F(NodeDataTest, AGroupRefusesTransformsOfAnotherSize)
{
    struct Case
    {
        PropertyType type;
        std::size_t size;
        Support::Thrown thrown;
    };
    for (Case const& given :
         {Case{PropertyType::Translation, 3, invalidSize("SetTranslation", "Zyl2/Mox/Group", 82)},
          Case{PropertyType::Rotation, 4, invalidSize("SetRotation", "Zyl2/Mox/Group", 104)},
          Case{PropertyType::Scale, 3, invalidSize("SetScale", "Zyl2/Mox/Group", 124)}})
        for (std::size_t const size : {std::size_t(0), given.size - 1, given.size + 1})
            Support::expectThrown<InvalidArguments>(
                [&] { setOne(GroupId, given.type, Floats(size, 9.0F)); }, given.thrown);
    EXPECT_EQ(group().GetTranslation(), (std::array<float, 3>{0, 0, 0}));
    EXPECT_EQ(group().GetRotation(), (std::array<float, 4>{0, 0, 1, 0}));
    EXPECT_EQ(group().GetScale(), (std::array<float, 3>{1, 1, 1}));
}

TEST_F(NodeDataTest, AMaterialRefusesColoursOfAnotherSize)
{
    struct Case
    {
        PropertyType type;
        std::vector<std::size_t> sizes;
        Support::Thrown thrown;
    };
    Material const before = material();
    std::string const file = "Zyl2/Mox/Material";
    for (Case const& given :
         {Case{PropertyType::DiffuseColor, {0, 2, 5}, invalidSize("SetDiffuseColor", file, 74)},
          Case{PropertyType::SpecularColor, {0, 2, 5}, invalidSize("SetSpecularColor", file, 131)},
          Case{PropertyType::EmissiveColor, {0, 2, 4}, invalidSize("SetEmissiveColor", file, 100)},
          Case{PropertyType::AmbientColor, {0, 2, 4}, invalidSize("SetAmbientColor", file, 157)}})
        for (std::size_t const size : given.sizes)
            Support::expectThrown<InvalidArguments>(
                [&] { setOne(ShapeId, given.type, Floats(size, 9.0F)); }, given.thrown);
    EXPECT_EQ(material().GetDiffuseColor(), before.GetDiffuseColor());
    EXPECT_EQ(material().GetSpecularColor(), before.GetSpecularColor());
    EXPECT_EQ(material().GetEmissiveColor(), before.GetEmissiveColor());
    EXPECT_EQ(material().GetAmbientColor(), before.GetAmbientColor());
}

TEST_F(NodeDataTest, ATransformOnAShapeFindsNoGroup)
{
    for (PropertyType const type :
         {PropertyType::Translation, PropertyType::Rotation, PropertyType::Scale})
        for (unsigned int const id : {ShapeId, GeometryId})
            Support::expectThrown<InvalidArguments>([&] { setOne(id, type, Floats(3)); },
                                                    emptyNode);
}

TEST_F(NodeDataTest, AMaterialPropertyOnAGroupFindsNoShape)
{
    for (PropertyType const type : {PropertyType::DiffuseColor, PropertyType::SpecularColor,
                                    PropertyType::EmissiveColor, PropertyType::AmbientColor})
        Support::expectThrown<InvalidArguments>([&] { setOne(GroupId, type, Floats(3)); },
                                                emptyNode);
    for (PropertyType const type :
         {PropertyType::Transparency, PropertyType::AmbientIntensity, PropertyType::Shininess})
        Support::expectThrown<InvalidArguments>([&] { setOne(GroupId, type, 1.0F); }, emptyNode);
}

TEST_F(NodeDataTest, TheValuesTypeIsCheckedBeforeTheNodeAndTheNodeBeforeTheSize)
{
    Support::expectThrown<TemplateSpecializationNotDefined>(
        [&] { setOne(ShapeId, PropertyType::Translation, 1); }, wrongValueType);
    Support::expectThrown<TemplateSpecializationNotDefined>(
        [&] { setOne(GroupId, PropertyType::Shininess, 1); }, wrongValueType);
    Support::expectThrown<InvalidArguments>(
        [&] { setOne(ShapeId, PropertyType::Translation, Floats(1)); }, emptyNode);
    Support::expectThrown<InvalidArguments>(
        [&] { setOne(GroupId, PropertyType::DiffuseColor, Floats(1)); }, emptyNode);
}

TEST_F(NodeDataTest, TheUnsupportedPropertyAlwaysFails)
{
    auto const expectRefused = [this](auto const& value) {
        for (unsigned int const id : {GroupId, ShapeId, GeometryId})
            Support::expectThrown<TemplateSpecializationNotDefined>(
                [&] { setOne(id, PropertyType::Unsupported, value); }, wrongValueType);
    };
    expectRefused(true);
    expectRefused(1);
    expectRefused(1.0F);
    expectRefused("text");
    expectRefused(std::vector<int>{1});
    expectRefused(Floats{1.0F});
}

TEST_F(NodeDataTest, PropertiesPastTheLastAreInvalid)
{
    for (unsigned int const value : {11U, 4294967295U})
        for (unsigned int const id : {GroupId, ShapeId})
            Support::expectThrown<InvalidArguments>(
                [&] { setOne(id, static_cast<PropertyType>(value), true); }, invalidProperties);
}

TEST_F(NodeDataTest, AGeometryThatIsNotBelowAShapeTakesNothing)
{
    open.tree().SetCurrentId(GroupId);
    open.tree().AddNode(std::make_unique<Zyl2Mox::Geometry>("alone"));
    unsigned int const id = open.tree().GetCurrentId();
    Support::expectThrown<InvalidArguments>([&] { setOne(id, PropertyType::Shininess, 1.0F); },
                                            emptyNode);
    Support::expectThrown<InvalidArguments>(
        [&] { setOne(id, PropertyType::Translation, Floats(3)); }, emptyNode);
    Attributes attributes;
    attributes.set("key", 1);
    EXPECT_NO_THROW(set(id, NodeProperties(), attributes));
    EXPECT_TRUE(group().GetAttributes().empty());
    EXPECT_EQ(open.tree().GetCurrentId(), GroupId);
}

} // namespace
