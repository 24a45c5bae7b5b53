#include <read/frd/PartRows.h>

#include <gtest/gtest.h>

namespace {

using Frd::Header;
using Frd::Mesh;
using Frd::PartRows;
using Frd::Topology;
using Indexes = std::vector<std::uint32_t>;

/// Nodes 50, 40, 30, 20, 10, in this order.
Mesh fiveNodes()
{
    Mesh mesh;
    for (std::uint32_t id = 50; id >= 10; id -= 10)
        mesh.addNode({id, {}});
    return mesh;
}

TEST(PartRows, GroupMaterialAndDimensionTellPartsApart)
{
    Mesh mesh = fiveNodes();
    Topology const& line = *Topology::find(11);
    Topology const& triangle = *Topology::find(7);
    mesh.addElement(1, line, 1, 2, {0, 1});
    mesh.addElement(2, line, 0, 2, {0, 1});
    mesh.addElement(3, triangle, 0, 2, {0, 1, 2});
    mesh.addElement(4, line, 0, 1, {0, 1});
    mesh.addElement(5, line, 0, 2, {3, 4});
    Header header;
    header.materials[2] = "STEEL";
    std::vector<PartRows> const parts = partRowsOf(mesh, header);
    ASSERT_EQ(parts.size(), 4U);
    EXPECT_EQ(parts[0].name, "Group 0 Material 1 1D");
    EXPECT_EQ(parts[1].name, "Group 0 Material STEEL 1D");
    EXPECT_EQ(parts[1].materialName, "STEEL");
    EXPECT_EQ(parts[1].elements, (std::vector<std::size_t>{1, 4}));
    EXPECT_EQ(parts[2].name, "Group 0 Material STEEL 2D");
    EXPECT_EQ(parts[3].name, "Group 1 Material STEEL 1D");
}

TEST(PartRows, APartHasTheNodesOfItsElementsOnceByAscendingId)
{
    Mesh mesh = fiveNodes();
    Topology const& line = *Topology::find(11);
    mesh.addElement(1, line, 0, 1, {0, 3});
    mesh.addElement(2, line, 0, 1, {3, 1});
    std::vector<PartRows> const parts = partRowsOf(mesh, Header());
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].nodes, (Indexes{3, 1, 0}));
}

TEST(PartRows, NodesWithoutElementsHaveAPartOfTheirOwn)
{
    Mesh mesh = fiveNodes();
    mesh.addElement(1, *Topology::find(7), 0, 1, {0, 1, 3});
    std::vector<PartRows> const parts = partRowsOf(mesh, Header());
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[1].name, "Nodes without elements");
    EXPECT_EQ(parts[1].dimension, 0);
    EXPECT_EQ(parts[1].nodes, (Indexes{4, 2}));
    EXPECT_TRUE(parts[1].elements.empty());
}

TEST(PartRows, NoNodesWithoutElementsNoPartForThem)
{
    Mesh mesh;
    mesh.addNode({1, {}});
    mesh.addNode({2, {}});
    mesh.addElement(1, *Topology::find(11), 0, 1, {0, 1});
    EXPECT_EQ(partRowsOf(mesh, Header()).size(), 1U);
}

} // namespace
