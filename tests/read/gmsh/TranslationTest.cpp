// From the file to the model: read back with the reader under tools/moxread.

#include <support/Folder.h>
#include <support/ModelFile.h>

#include <exchange/Translation.h>
#include <read/gmsh/Source.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using Floats = std::vector<float>;
using Numbers = std::vector<std::uint32_t>;
using Names = std::vector<std::string>;

TEST(GmshTranslation, MeshAndResultsArriveValueByValue)
{
    Support::Folder const folder;
    auto const input = folder.write(
        "wing.msh",
        "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n"
        "$PhysicalNames\n1\n2 7 \"skin\"\n$EndPhysicalNames\n"
        "$Nodes\n5\n1 0 0 0\n2 1 0 0\n3 0 1 0\n4 1 1 0.5\n5 7 8 9\n$EndNodes\n"
        "$Elements\n3\n11 2 2 7 1 1 2 3\n12 2 2 7 1 2 4 3\n13 15 2 0 1 5\n$EndElements\n"
        "$NodeData\n1\n\"T\"\n1\n0.5\n3\n0\n1\n2\n1 1.5\n4 2.5\n$EndNodeData\n"
        "$NodeData\n1\n\"T\"\n1\n1.5\n3\n1\n1\n1\n5 3.5\n$EndNodeData\n"
        "$ElementData\n1\n\"S\"\n1\n0.5\n3\n0\n9\n2\n11 1 4 6 4 2 5 6 5 3\n"
        "12 7 0 0 0 7 0 0 0 7\n$EndElementData\n");
    Exchange::Report report;
    Exchange::translate(input, Gmsh::open, folder.path("out.mox"), {}, report);
    Support::ModelFile model(folder.path("out.mox"));
    EXPECT_EQ(model.shapes(), (Names{"wing/Point 1", "wing/skin"}));
    EXPECT_EQ(model.floats({"skin"}, "Coordinates"),
              (Floats{0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0.5F}));
    EXPECT_EQ(model.numbers({"skin"}, "Connectivity"), (Numbers{0, 1, 2, 1, 3, 2}));
    EXPECT_EQ(model.numbers({"skin"}, "Element IDs"), (Numbers{11, 12}));
    EXPECT_EQ(model.numbers({"Point 1"}, "Node Ids"), Numbers{5});
    Floats const values = model.floats({"skin"}, "T", "Step 1");
    EXPECT_EQ(values[0], 1.5F);
    EXPECT_TRUE(std::isnan(values[1]));
    EXPECT_EQ(values[3], 2.5F);
    EXPECT_EQ(model.find({"skin"}, "T", "Step 2"), nullptr);
    EXPECT_EQ(model.floats({"Point 1"}, "T", "Step 2"), Floats{3.5F});
    EXPECT_EQ(model.floats({"skin"}, "S", "Step 1"), (Floats{1, 2, 3, 4, 5, 6, 7, 7, 7, 0, 0, 0}));
}

} // namespace
