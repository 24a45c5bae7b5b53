#include <read/frd/Mesh.h>

#include <gtest/gtest.h>

namespace {

TEST(Mesh, NodesAreFoundByTheirIds)
{
    Frd::Mesh mesh;
    EXPECT_TRUE(mesh.addNode({4294967295U, {1, 2, 3}}));
    EXPECT_TRUE(mesh.addNode({0, {4, 5, 6}}));
    EXPECT_EQ(mesh.indexOf(4294967295), 0U);
    EXPECT_EQ(mesh.indexOf(0), 1U);
    EXPECT_EQ(mesh.indexOf(7), std::nullopt);
}

TEST(Mesh, IdsOutOfRangeAreNotTakenForOthers)
{
    Frd::Mesh mesh;
    mesh.addNode({1, {}});
    mesh.addNode({4294967295U, {}});
    EXPECT_EQ(mesh.indexOf(4294967297), std::nullopt);
    EXPECT_EQ(mesh.indexOf(-1), std::nullopt);
}

TEST(Mesh, ASecondNodeOrElementOfTheSameIdIsNotAdded)
{
    Frd::Mesh mesh;
    EXPECT_TRUE(mesh.addNode({1, {}}));
    EXPECT_FALSE(mesh.addNode({1, {}}));
    EXPECT_EQ(mesh.nodes().size(), 1U);
    Frd::Topology const& line = *Frd::Topology::find(11);
    EXPECT_TRUE(mesh.addElement(1, line, 0, 0, {0, 0}));
    EXPECT_FALSE(mesh.addElement(1, line, 0, 0, {0, 0}));
    EXPECT_EQ(mesh.elements().size(), 1U);
}

TEST(Mesh, EachElementKnowsItsOwnNodes)
{
    Frd::Mesh mesh;
    for (std::uint32_t id = 10; id < 15; ++id)
        mesh.addNode({id, {}});
    mesh.addElement(1, *Frd::Topology::find(11), 0, 0, {4, 2});
    mesh.addElement(2, *Frd::Topology::find(7), 0, 0, {1, 3, 0});
    EXPECT_EQ(mesh.nodeOf(mesh.elements()[0], 1), 2U);
    EXPECT_EQ(mesh.nodeOf(mesh.elements()[1], 0), 1U);
    EXPECT_EQ(mesh.nodeOf(mesh.elements()[1], 2), 0U);
}

} // namespace
