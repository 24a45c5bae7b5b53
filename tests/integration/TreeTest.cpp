#include "integration/CheckedModel.h"

#include "container/TemporaryFile.h"

#include <gtest/gtest.h>

#include <limits>

namespace Integration {

namespace {

using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::PropertyType;

class TreeTest : public testing::Test
{
protected:
    TreeTest() { model.save(); }

    Support::TemporaryFolder folder;
    CheckedModel model{folder.File("tree.mox")};
};

/// One attribute of every type that a model stores.
AttributeSet allTypes()
{
    AttributeSet attributes;
    attributes.set("float", 0.1F);
    attributes.set("float not a number", std::numeric_limits<float>::quiet_NaN());
    attributes.set("float infinite", -std::numeric_limits<float>::infinity());
    attributes.set("double", 0.1);
    attributes.set("int", -1);
    attributes.set("int smallest", std::numeric_limits<int>::min());
    attributes.set("unsigned", 4294967295U);
    attributes.set("long", 4294967297L);
    attributes.set("long negative", -2L);
    attributes.set("string", std::string("text"));
    attributes.set("terminated text", "more text");
    return attributes;
}

AttributeSet textsOfLength(std::initializer_list<std::size_t> lengths)
{
    AttributeSet attributes;
    for (std::size_t const length : lengths)
        attributes.set("length " + std::to_string(length), std::string(length, 'x'));
    return attributes;
}

PropertySet wholeMaterial()
{
    PropertySet properties;
    properties.set(PropertyType::DiffuseColor, {0.5F, 0.25F, 0.125F, 0.75F});
    properties.set(PropertyType::SpecularColor, {0.1F, 0.2F, 0.3F});
    properties.set(PropertyType::EmissiveColor, {0.4F, 0.5F, 0.6F});
    properties.set(PropertyType::AmbientColor, {0.7F, 0.8F, 0.9F});
    properties.set(PropertyType::Transparency, 0.35F);
    properties.set(PropertyType::Shininess, 0.65F);
    return properties;
}

} // namespace

TEST_F(TreeTest, AFlaggedRootReadsBackWithItsAttributes)
{
    EXPECT_EQ(model.addNode(NodeType::FlaggedRootGroup, "root", allTypes()), 1U);
    model.addNode(NodeType::Group, "below");
    model.closeAndCompare();
}

TEST_F(TreeTest, ARootShapeHasAMaterialButNoGeometry)
{
    EXPECT_EQ(model.addNode(NodeType::Shape, "root"), 1U);
    model.setNodeData(1, wholeMaterial());
    EXPECT_EQ(model.addNode(NodeType::Shape, "below"), 3U);
    model.setCurrentNodeId(1);
    EXPECT_EQ(model.addNode(NodeType::Group, "beside"), 4U);
    EXPECT_EQ(model.expected().node(1).children, (std::vector<std::uint32_t>{2, 4}));
    model.closeAndCompare();
}

TEST_F(TreeTest, AModelWithoutNodesHasARootWithoutContent)
{
    model.closeAndCompare();
}

TEST_F(TreeTest, TransformsAndMergedAttributesOfGroupsReadBack)
{
    model.addNode(NodeType::RootGroup, "root");
    AttributeSet first;
    first.set("kept", 1);
    first.set("overwritten", 2);
    unsigned int const id = model.addNode(NodeType::Group, "group", first);
    PropertySet transform;
    transform.set(PropertyType::Translation, {1.5F, -2.5F, 1e30F});
    transform.set(PropertyType::Rotation, {0.0F, 1.0F, 0.0F, 3.14159F});
    transform.set(PropertyType::Scale, {2.0F, 3.0F, -4.0F});
    AttributeSet second;
    second.set("overwritten", "by a text");
    second.set("new", 0.5F);
    model.setNodeData(id, transform, second);
    model.closeAndCompare();
}

TEST_F(TreeTest, TextsUpTo256BytesReadBackWholeAndLongerOnesCut)
{
    model.addNode(NodeType::RootGroup, "root", textsOfLength({0, 1, 255, 256, 257, 300}));
    model.closeAndCompare();
}

TEST_F(TreeTest, TextsEndAtTheirFirstZeroByte)
{
    AttributeSet attributes;
    attributes.set("inside", std::string("before\0after", 12));
    attributes.set("first", std::string("\0after", 6));
    attributes.set("behind 256", std::string(256, 'x') + std::string(1, '\0') + "after");
    model.addNode(NodeType::RootGroup, "root", attributes);
    model.closeAndCompare();
}

TEST_F(TreeTest, AttributeNamesAreAnyBytesInAscendingOrder)
{
    AttributeSet attributes;
    for (char const* name : {"b", "B", "", "a b", "\xFF", "\x1E", "\xC3\xA4"})
        attributes.set(name, 7);
    attributes.set(std::string("zero\0byte", 9), 8);
    attributes.set(std::string(300, 'n'), 9);
    model.addNode(NodeType::RootGroup, "root", attributes);
    model.closeAndCompare();
}

TEST_F(TreeTest, NodeNamesAreAnyBytes)
{
    model.addNode(NodeType::RootGroup, "\x1E");
    for (std::string const& name : {std::string(), std::string("a/b"),
                                    std::string("Gr\xC3\xB6\xC3\x9F"
                                                "e"),
                                    std::string("\xFF\xFE\x80"), std::string("zero\0byte", 9),
                                    std::string(300, 'n'), std::string("line\nfeed")}) {
        model.addNode(NodeType::Shape, name);
        model.addNode(NodeType::Group, name);
        model.setCurrentNodeId(1);
    }
    model.closeAndCompare();
}

TEST_F(TreeTest, EqualNamesBesideEachOtherStayApart)
{
    model.addNode(NodeType::RootGroup, "same");
    for (int count = 0; count < 3; ++count) {
        model.addNode(NodeType::Group, "same");
        model.setCurrentNodeId(1);
    }
    EXPECT_EQ(model.getNodeId({"same", "same"}), 2U);
    model.closeAndCompare();
}

TEST_F(TreeTest, EveryMaterialPropertyReadsBackThroughTheGeometryAndThroughTheShape)
{
    model.addNode(NodeType::RootGroup, "root");
    unsigned int const geometry = model.addNode(NodeType::Shape, "through geometry");
    model.setCurrentNodeId(1);
    unsigned int const other = model.addNode(NodeType::Shape, "through shape");
    model.setNodeData(geometry, wholeMaterial());
    model.setNodeData(other - 1, wholeMaterial());
    model.closeAndCompare();
}

TEST_F(TreeTest, AmbientIntensityOverridesTheAmbientColour)
{
    model.addNode(NodeType::RootGroup, "root");
    PropertySet properties = wholeMaterial();
    properties.set(PropertyType::AmbientIntensity, 0.3F);
    model.setNodeData(model.addNode(NodeType::Shape, "shape"), properties);
    model.closeAndCompare();
}

TEST_F(TreeTest, AttributesOfShapesAreDropped)
{
    model.addNode(NodeType::RootGroup, "root");
    unsigned int const shape = model.addNode(NodeType::Shape, "shape", allTypes());
    model.setNodeData(shape, PropertySet(), allTypes());
    model.closeAndCompare();
}

TEST_F(TreeTest, ComponentPathsShareTheirGroups)
{
    std::vector<unsigned int> const ids = model.addComponents({
        "/car/body/door",
        "/car/body/roof",
        "/car/wheels/",
        "",
        "/car",
        "/car/",
        "/car/body/door",
        "/car/body/door/",
        "/car/body",
    });
    EXPECT_EQ(ids, (std::vector<unsigned int>{4, 6, 7, 0, 1, 1, 4, 8, 10}));
    model.closeAndCompare();
}

TEST_F(TreeTest, ComponentPathsGoBelowNodesThatWereAddedOneByOne)
{
    model.addNode(NodeType::FlaggedRootGroup, "car", allTypes());
    model.addNode(NodeType::Group, "body", allTypes());
    model.addNode(NodeType::Shape, "door");
    model.addComponents({"::car::body::door", "::car::body::roof"}, "::");
    model.addNode(NodeType::Group, "below the roof's geometry");
    EXPECT_EQ(model.expected().nodeCount(), 7U);
    model.closeAndCompare();
}

TEST_F(TreeTest, ADeepTreeReadsBack)
{
    model.addNode(NodeType::RootGroup, "root");
    for (int depth = 0; depth < 2000; ++depth)
        model.addNode(NodeType::Group, std::to_string(depth));
    model.closeAndCompare();
}

TEST_F(TreeTest, AWideTreeReadsBack)
{
    model.addNode(NodeType::RootGroup, "root");
    for (int shape = 0; shape < 2000; ++shape) {
        model.setCurrentNodeId(1);
        model.addNode(NodeType::Shape, std::to_string(shape));
    }
    model.closeAndCompare();
}

} // namespace Integration
