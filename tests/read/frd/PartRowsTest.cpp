#include <read/frd/PartRows.h>

#include <gtest/gtest.h>

namespace {

using Frd::Header;
using Frd::Mesh;
using Frd::PartRows;
using Frd::Topology;

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

} // namespace
