#include <read/frd/Mesh.h>

#include <gtest/gtest.h>

namespace {

TEST(Mesh, IdsOutOfRangeAreNotTakenForOthers)
{
    Frd::Mesh mesh;
    mesh.addNode({1, {}});
    mesh.addNode({4294967295U, {}});
    EXPECT_EQ(mesh.indexOf(4294967297), std::nullopt);
    EXPECT_EQ(mesh.indexOf(-1), std::nullopt);
}

} // namespace
