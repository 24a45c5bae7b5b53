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

TEST(NodeData, NeedsAFileThatIsOpenForWriting)
{
    Database database;
    Modifier::NodeData command(0, NodeProperties(), Attributes());
    Support::expectThrown<InvalidObjectState>([&] { command.update(database); },
                                              ModelTests::fileNotOpen);
    database.tree = std::make_shared<Zyl2Mox::Tree>();
    Support::expectThrown<InvalidObjectState>([&] { command.update(database); },
                                              ModelTests::notInWriteMode);
}

TEST_F(NodeDataTest, ZeroAndIdsPastTheLastNodeAreOutOfBounds)
{
    for (unsigned int const id : {0U, 5U, 4294967295U})
        Support::expectThrown<OutOfBounds>([&] { set(id, NodeProperties()); }, outOfBounds);
    EXPECT_EQ(open.tree().GetCurrentId(), GeometryId);
}

TEST_F(NodeDataTest, AnIdEqualToTheNumberOfNodesIsAccepted)
{
    ASSERT_EQ(open.tree().GetNodeCount(), 4U);
    EXPECT_NO_THROW(set(4, NodeProperties()));
}

TEST_F(NodeDataTest, TheTargetBecomesCurrent)
{
    set(1, NodeProperties());
    EXPECT_EQ(open.tree().GetCurrentId(), 1U);
    set(GroupId, NodeProperties());
    EXPECT_EQ(open.tree().GetCurrentId(), GroupId);
    set(ShapeId, NodeProperties());
    EXPECT_EQ(open.tree().GetCurrentId(), ShapeId);
}

TEST(NodeData, AGroupBelowAShapeDoesNotLeadToTheShape)
{
    OpenDatabase shapeAtTheRoot;
    shapeAtTheRoot.add(NodeType::Shape, "root");
    unsigned int const id = shapeAtTheRoot.add(NodeType::Group, "group");
    NodeProperties properties;
    properties.set(PropertyType::Transparency, 0.5F);
    Modifier::NodeData command(id, properties, Attributes());
    Support::expectThrown<InvalidArguments>([&] { command.update(shapeAtTheRoot.database); },
                                            emptyNode);
    EXPECT_EQ(shapeAtTheRoot.tree().GetCurrentId(), id);
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

TEST_F(NodeDataTest, AGroupTakesItsTransform)
{
    NodeProperties properties;
    properties.set(PropertyType::Translation, Floats{1, 2, 3});
    properties.set(PropertyType::Rotation, Floats{0, 1, 0, 0.5F});
    properties.set(PropertyType::Scale, Floats{4, 5, 6});
    set(GroupId, properties);
    EXPECT_EQ(group().GetTranslation(), (std::array<float, 3>{1, 2, 3}));
    EXPECT_EQ(group().GetRotation(), (std::array<float, 4>{0, 1, 0, 0.5F}));
    EXPECT_EQ(group().GetScale(), (std::array<float, 3>{4, 5, 6}));
}

TEST_F(NodeDataTest, AShapesMaterialTakesColoursAndNumbers)
{
    NodeProperties properties;
    properties.set(PropertyType::DiffuseColor, Floats{0.1F, 0.2F, 0.3F});
    properties.set(PropertyType::SpecularColor, Floats{0.4F, 0.5F, 0.6F});
    properties.set(PropertyType::EmissiveColor, Floats{0.7F, 0.8F, 0.9F});
    properties.set(PropertyType::AmbientColor, Floats{0.11F, 0.12F, 0.13F});
    properties.set(PropertyType::Transparency, 0.25F);
    properties.set(PropertyType::Shininess, 0.75);
    float const ambientAlpha = material().GetAmbientColor()[3];
    set(ShapeId, properties);
    EXPECT_EQ(material().GetDiffuseColor(), (Color{0.1F, 0.2F, 0.3F, 1.0F}));
    EXPECT_EQ(material().GetSpecularColor(), (Color{0.4F, 0.5F, 0.6F, 1.0F}));
    EXPECT_EQ(material().GetEmissiveColor(), (Color{0.7F, 0.8F, 0.9F, 1.0F}));
    EXPECT_EQ(material().GetAmbientColor(), (Color{0.11F, 0.12F, 0.13F, ambientAlpha}));
    EXPECT_EQ(material().GetTransparency(), 0.25F);
    EXPECT_EQ(material().GetShininess(), 0.75F);
}

TEST_F(NodeDataTest, AFourthColourValueIsIgnoredAndAlphaStays)
{
    NodeProperties properties;
    properties.set(PropertyType::DiffuseColor, Floats{0.1F, 0.2F, 0.3F, 0.4F});
    properties.set(PropertyType::SpecularColor, Floats{0.5F, 0.6F, 0.7F, 0.8F});
    set(GeometryId, properties);
    EXPECT_EQ(material().GetDiffuseColor(), (Color{0.1F, 0.2F, 0.3F, 1.0F}));
    EXPECT_EQ(material().GetSpecularColor(), (Color{0.5F, 0.6F, 0.7F, 1.0F}));
}

TEST_F(NodeDataTest, AmbientIntensityOverridesAnAmbientColourWithAShareOfTheDiffuseColour)
{
    NodeProperties properties;
    properties.set(PropertyType::AmbientIntensity, 0.5F);
    properties.set(PropertyType::AmbientColor, Floats{1, 1, 1});
    set(ShapeId, properties);
    EXPECT_EQ(material().GetAmbientColor(), (Color{0.4F, 0.4F, 0.4F, 0.5F}));
}

TEST_F(NodeDataTest, AmbientIntensityIsAppliedAfterADiffuseColourOfTheSameCallAndNotKept)
{
    NodeProperties properties;
    properties.set(PropertyType::AmbientIntensity, 0.5F);
    properties.set(PropertyType::DiffuseColor, Floats{0.2F, 0.4F, 0.6F});
    set(ShapeId, properties);
    Color const ambient{0.1F, 0.2F, 0.3F, 0.5F};
    EXPECT_EQ(material().GetAmbientColor(), ambient);
    setOne(ShapeId, PropertyType::DiffuseColor, Floats{1, 1, 1});
    EXPECT_EQ(material().GetAmbientColor(), ambient);
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

TEST_F(NodeDataTest, ATransparencyGivenAsAnIntIsRefused)
{
    Support::expectThrown<TemplateSpecializationNotDefined>(
        [&] { setOne(ShapeId, PropertyType::Transparency, 1); }, wrongValueType);
    EXPECT_EQ(material().GetTransparency(), 0.0F);
}

TEST_F(NodeDataTest, ValuesAreNotConverted)
{
    for (unsigned int value = 0; value < 7; ++value) {
        auto const type = static_cast<PropertyType>(value);
        unsigned int const id = value < 3 ? GroupId : ShapeId;
        EXPECT_THROW(setOne(id, type, std::vector<int>(3)), TemplateSpecializationNotDefined);
        EXPECT_THROW(setOne(id, type, 1.0F), TemplateSpecializationNotDefined);
        EXPECT_THROW(setOne(id, type, "1 2 3"), TemplateSpecializationNotDefined);
    }
    for (PropertyType const type :
         {PropertyType::Transparency, PropertyType::AmbientIntensity, PropertyType::Shininess}) {
        EXPECT_THROW(setOne(ShapeId, type, Floats{1.0F}), TemplateSpecializationNotDefined);
        EXPECT_THROW(setOne(ShapeId, type, true), TemplateSpecializationNotDefined);
        EXPECT_THROW(setOne(ShapeId, type, "1"), TemplateSpecializationNotDefined);
    }
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

TEST_F(NodeDataTest, PropertiesBeforeAFailingOneStayAppliedAndAttributesAreNotMerged)
{
    NodeProperties properties;
    properties.set(PropertyType::Scale, Floats{4, 5});
    properties.set(PropertyType::Translation, Floats{1, 2, 3});
    Attributes attributes;
    attributes.set("key", 1);
    EXPECT_THROW(set(GroupId, properties, attributes), InvalidArguments);
    EXPECT_EQ(group().GetTranslation(), (std::array<float, 3>{1, 2, 3}));
    EXPECT_EQ(group().GetScale(), (std::array<float, 3>{1, 1, 1}));
    EXPECT_TRUE(group().GetAttributes().empty());
}

TEST_F(NodeDataTest, AttributesAreMergedIntoThoseOfAGroup)
{
    Attributes first;
    first.set("kept", 1);
    first.set("overwritten", 2);
    set(GroupId, NodeProperties(), first);
    Attributes second;
    second.set("overwritten", "text");
    second.set("new", 2.5F);
    set(GroupId, NodeProperties(), second);
    auto const& attributes = group().GetAttributes();
    ASSERT_EQ(attributes.size(), 3U);
    EXPECT_EQ(attributes.at("kept").GetInteger(), 1U);
    EXPECT_EQ(attributes.at("overwritten").GetText(), "text");
    EXPECT_EQ(attributes.at("new").GetFloat(), 2.5F);
}

TEST_F(NodeDataTest, AnAttributeThatCanNotBeStoredKeepsAllOfThemOut)
{
    Attributes attributes;
    attributes.set("a", 1);
    attributes.set("b", true);
    Support::expectThrown<InvalidArguments>([&] { set(GroupId, NodeProperties(), attributes); },
                                            ModelTests::unsupportedScalar);
    EXPECT_TRUE(group().GetAttributes().empty());
}

TEST_F(NodeDataTest, AttributesForAShapeAreIgnoredWithoutAnyFailure)
{
    Attributes attributes;
    attributes.set("stored", 1);
    attributes.set("refused", true);
    for (unsigned int const id : {ShapeId, GeometryId})
        EXPECT_NO_THROW(set(id, NodeProperties(), attributes));
    EXPECT_TRUE(group().GetAttributes().empty());
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

TEST_F(NodeDataTest, ArgumentsAreCopied)
{
    NodeProperties properties;
    properties.set(PropertyType::Translation, Floats{1, 2, 3});
    Attributes attributes;
    attributes.set("key", 1);
    Modifier::NodeData command(GroupId, properties, attributes);
    properties.set(PropertyType::Translation, Floats{9, 9, 9});
    attributes.set("key", 9);
    command.update(open.database);
    EXPECT_EQ(group().GetTranslation(), (std::array<float, 3>{1, 2, 3}));
    EXPECT_EQ(group().GetAttributes().at("key").GetInteger(), 1U);
}

TEST(NodeData, NotNullGivesBackWhatIsNotNull)
{
    Shape shape("shape");
    Group group("group", Zyl2Util::AttributeList());
    EXPECT_EQ(Modifier::NodeData::notNull(&shape), &shape);
    EXPECT_EQ(Modifier::NodeData::notNull(&group), &group);
    Support::expectThrown<InvalidArguments>(
        [] { Modifier::NodeData::notNull(static_cast<Group*>(nullptr)); }, emptyNode);
}

TEST(NodeData, ValueFromGivesAValueOfItsVeryType)
{
    EXPECT_EQ(Modifier::NodeData::valueFrom<float>(PropertyValue(1.5F)), 1.5F);
    EXPECT_EQ(Modifier::NodeData::valueFrom<Floats>(PropertyValue(Floats{1, 2})), (Floats{1, 2}));
    Support::expectThrown<TemplateSpecializationNotDefined>(
        [] { Modifier::NodeData::valueFrom<bool>(PropertyValue(1)); }, wrongValueType);
}

} // namespace
