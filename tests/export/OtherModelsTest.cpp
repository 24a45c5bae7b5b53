// Models that were not made by a translation: whatever the writer can write must be understood.

#include "Exported.h"

#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkPointData.h>

#include <gtest/gtest.h>

namespace {

using namespace ExportTest;

using Texts = std::vector<std::string>;

Export::ExportSummary summaryOf(ModelFile const& file, std::string const& output = "out.vtu")
{
    return Export::exportModel(file.path(), file.path(output));
}

TEST(OtherModels, CoordinatesThatShapesShareAreThereForEach)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const first = model.addNode(NodeType::Shape, "first");
        leaveShape(model);
        unsigned int const second = model.addNode(NodeType::Shape, "second");
        Array1d<unsigned int> const both{first, second};
        model.addArrayProperty(DatasetType::Coordinates, rows(3, triangleNodes()), both, Step());
        model.addArrayProperty(DatasetType::Displacement, rows(3, triangleNodes()), both,
                               Step("One"));
    });
    Floats twice = triangleNodes();
    twice.insert(twice.end(), triangleNodes().begin(), triangleNodes().end());
    auto const grid = exportedGrid(file);
    EXPECT_EQ(ReadBack::points(*grid), twice);
    EXPECT_EQ(ReadBack::floats(grid->GetPointData(), "Displacement"), twice);
}

TEST(OtherModels, ALinkedConnectivityKeepsItsElementType)
{
    auto const grid = exportedGrid(ModelFile([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const first = model.addNode(NodeType::Shape, "first");
        leaveShape(model);
        unsigned int const second = model.addNode(NodeType::Shape, "second");
        Array1d<unsigned int> const both{first, second};
        Attributes type;
        type.set("ElementType", "Polygon");
        model.addArrayProperty(DatasetType::Coordinates, rows(3, triangleNodes()), both, Step());
        model.addArrayProperty(DatasetType::Connectivity2, Array1d<unsigned int>{0, 1, 2}, both,
                               Step(), type);
        model.addArrayProperty(DatasetType::Polylength2, Array1d<unsigned int>{3}, both, Step());
    }));
    EXPECT_EQ(ReadBack::cellTypes(*grid), (std::vector<int>{VTK_POLYGON, VTK_POLYGON}));
}

TEST(OtherModels, NodesWithoutElementsArePoints)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "cloud");
        model.addArrayProperty(DatasetType::Coordinates, rows(3, triangleNodes()), shape, Step());
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{1, 2, 3}, shape,
                               Step("One"));
    });
    auto const summary = summaryOf(file);
    EXPECT_EQ(summary.elements, 0U);
    EXPECT_TRUE(summary.warnings.empty());
    auto const grid = ReadBack::grid(file.path("out.vtu"));
    EXPECT_EQ(ReadBack::cellTypes(*grid), (std::vector<int>{VTK_VERTEX, VTK_VERTEX, VTK_VERTEX}));
    EXPECT_EQ(ReadBack::connectivity(*grid), (std::vector<vtkIdType>{0, 1, 2}));
    EXPECT_EQ(ReadBack::floats(grid->GetPointData(), "T"), (Floats{1, 2, 3}));
}

TEST(OtherModels, ConnectivityWithoutPolylengthLeavesPointsAndAWarning)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "part");
        model.addArrayProperty(DatasetType::Coordinates, rows(3, triangleNodes()), shape, Step());
        model.addArrayProperty(DatasetType::Connectivity2, Array1d<unsigned int>{0, 1, 2}, shape,
                               Step());
    });
    EXPECT_EQ(summaryOf(file).warnings,
              Texts{R"(The shape "part" does not say how many nodes its elements have: its nodes )"
                    R"(are shown as points.)"});
    EXPECT_EQ(ReadBack::grid(file.path("out.vtu"))->GetNumberOfCells(), 3);
}

TEST(OtherModels, AShapeWithoutCoordinatesIsLeftOutWithAWarningWhenItHasResults)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        model.addNode(NodeType::Shape, "empty");
        leaveShape(model);
        unsigned int const shape = model.addNode(NodeType::Shape, "nowhere");
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{1, 2, 3}, shape,
                               Step("One"));
        leaveShape(model);
        addTriangle(model, "part");
    });
    EXPECT_EQ(
        summaryOf(file).warnings,
        Texts{R"(The shape "nowhere" has no coordinates, so that nothing of it can be shown.)"});
    auto const grid = ReadBack::grid(file.path("out.vtu"));
    EXPECT_EQ(ReadBack::points(*grid), triangleNodes());
    EXPECT_EQ(ReadBack::integers(grid->GetCellData(), "Shape"), std::vector<int>{2});
    summaryOf(file, "out.vtm");
    auto const blocks = ReadBack::blocks(file.path("out.vtm"));
    ASSERT_EQ(blocks->GetNumberOfBlocks(), 3U);
    EXPECT_EQ(ReadBack::nameOf(*blocks, 0), "empty");
}

TEST(OtherModels, ATreeWithoutShapesIsAnEmptyGrid)
{
    ModelFile const file([](Model& model) { model.addNode(NodeType::RootGroup, "root"); });
    EXPECT_EQ(exportedGrid(file)->GetNumberOfPoints(), 0);
    EXPECT_EQ(summaryOf(file, "out.vtm").shapes, 0U);
    EXPECT_EQ(ReadBack::blocks(file.path("out.vtm"))->GetNumberOfBlocks(), 0U);
    EXPECT_EQ(summaryOf(file, "all.pvd").files, 2U);
}

TEST(OtherModels, AModelWithoutContentIsAnEmptyGrid)
{
    EXPECT_EQ(exportedGrid(ModelFile([](Model&) {}))->GetNumberOfPoints(), 0);
}

TEST(OtherModels, ARootThatIsAShapeIsAnEmptyGrid)
{
    ModelFile const file([](Model& model) { model.addNode(NodeType::Shape, "part"); });
    EXPECT_EQ(exportedGrid(file)->GetNumberOfPoints(), 0);
}

TEST(OtherModels, DatasetsThatHaveNoPlaceAreLeftOutWithAWarning)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "part");
        model.addArrayProperty(DatasetType::PartElements2, Array1d<unsigned int>{0}, shape, Step());
    });
    EXPECT_EQ(summaryOf(file).warnings,
              Texts{R"(The dataset "Part Elements" of the shape "part" has no place in a grid )"
                    R"(and is left out.)"});
    EXPECT_EQ(ReadBack::cellTypes(*ReadBack::grid(file.path("out.vtu"))),
              std::vector<int>{VTK_TRIANGLE});
}

TEST(OtherModels, CoordinatesOfStepsAloneDo)
{
    Floats const moved = {0, 0, 1, 1, 0, 1, 0, 1, 1};
    ModelFile const file([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "part");
        model.addArrayProperty(DatasetType::Coordinates, rows(3, triangleNodes()), shape,
                               Step("One"));
        model.addArrayProperty(DatasetType::Coordinates, rows(3, moved), shape, Step("Two"));
    });
    EXPECT_EQ(ReadBack::points(*exportedGrid(file)), moved);
}

TEST(OtherModels, CoordinatesMayBeIntegers)
{
    EXPECT_EQ(ReadBack::points(*exportedGrid(ModelFile([](Model& model) {
                  model.addNode(NodeType::RootGroup, "root");
                  unsigned int const shape = model.addNode(NodeType::Shape, "part");
                  model.addArrayProperty(DatasetType::Coordinates,
                                         Array2d<unsigned int>(1, 3, {1, 2, 3}), shape, Step());
              }))),
              (Floats{1, 2, 3}));
}

TEST(OtherModels, ConnectivityOfFloatsIsRefused)
{
    EXPECT_EQ(complaintAbout([](Model& model) {
                  model.addNode(NodeType::RootGroup, "root");
                  unsigned int const shape = addTriangle(model, "part");
                  model.addArrayProperty(DatasetType::Connectivity2, Array1d<float>{0, 1, 2}, shape,
                                         Step());
              }),
              R"(Shape "part": Its connectivity has no integers.)");
}

} // namespace
