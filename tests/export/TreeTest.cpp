#include "Exported.h"

#include <vtkCellData.h>
#include <vtkPointData.h>

#include <gtest/gtest.h>

namespace {

using namespace ExportTest;

using Texts = std::vector<std::string>;

/// root { body { "left door", "a/b" }, empty {}, "Größe" }
ModelFile assembly()
{
    return ModelFile([](Model& model) {
        unsigned int const root = model.addNode(NodeType::RootGroup, "root");
        unsigned int const body = model.addNode(NodeType::Group, "body & soul");
        unsigned int const door = addTriangle(model, "left door");
        model.addArrayProperty("T <\"&'>", DatasetType::Result10, Array1d<float>{1, 2, 3}, door,
                               Step("One"));
        model.setCurrentNodeId(body);
        addTriangle(model, "a/b");
        model.setCurrentNodeId(root);
        model.addNode(NodeType::Group, "empty");
        model.setCurrentNodeId(root);
        unsigned int const size = addTriangle(model, "Größe");
        model.addArrayProperty("Größe in µm", DatasetType::Result10, Array1d<float>{4, 5, 6}, size,
                               Step("One"));
    });
}

TEST(Tree, ShapesOfOneGridAreTold)
{
    auto const grid = exportedGrid(assembly());
    EXPECT_EQ(grid->GetNumberOfPoints(), 9);
    EXPECT_EQ(ReadBack::integers(grid->GetCellData(), "Shape"), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(ReadBack::texts(grid->GetFieldData(), "Shape Names"),
              (Texts{"left door", "a/b", "Größe"}));
    EXPECT_EQ(ReadBack::texts(grid->GetFieldData(), "Shape Groups"),
              (Texts{"body & soul", "body & soul", ""}));
    EXPECT_EQ(ReadBack::connectivity(*grid), (std::vector<vtkIdType>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(Tree, FieldsKeepTheirNames)
{
    auto const grid = exportedGrid(assembly());
    EXPECT_NE(grid->GetPointData()->GetArray("T <\"&'>"), nullptr);
    EXPECT_NE(grid->GetPointData()->GetArray("Größe in µm"), nullptr);
}

TEST(Tree, BlocksAreNestedAndNamedLikeGroupsAndShapes)
{
    ModelFile const file = assembly();
    Export::exportModel(file.path(), file.path("out.vtm"));
    auto const root = ReadBack::blocks(file.path("out.vtm"));
    ASSERT_EQ(root->GetNumberOfBlocks(), 3U);
    EXPECT_EQ(ReadBack::nameOf(*root, 0), "body & soul");
    EXPECT_EQ(ReadBack::nameOf(*root, 1), "empty");
    EXPECT_EQ(ReadBack::nameOf(*root, 2), "Größe");
    auto* const body = vtkMultiBlockDataSet::SafeDownCast(root->GetBlock(0));
    ASSERT_NE(body, nullptr);
    ASSERT_EQ(body->GetNumberOfBlocks(), 2U);
    EXPECT_EQ(ReadBack::nameOf(*body, 0), "left door");
    EXPECT_EQ(ReadBack::nameOf(*body, 1), "a/b");
    auto* const size = vtkUnstructuredGrid::SafeDownCast(root->GetBlock(2));
    ASSERT_NE(size, nullptr);
    EXPECT_EQ(ReadBack::points(*size), triangleNodes());
    EXPECT_EQ(ReadBack::floats(size->GetPointData(), "Größe in µm"), (Floats{4, 5, 6}));
    EXPECT_EQ(size->GetPointData()->GetArray("T <\"&'>"), nullptr);
}

TEST(Tree, BlocksAreFilesInTheFolderBeside)
{
    ModelFile const file = assembly();
    auto const summary = Export::exportModel(file.path(), file.path("out.vtm"));
    EXPECT_EQ(file.folder().names(), (Texts{"model.mox", "out", "out.vtm"}));
    EXPECT_EQ(summary.files, 4U);
    EXPECT_EQ(summary.shapes, 3U);
    EXPECT_EQ(summary.nodes, 9U);
    EXPECT_EQ(summary.elements, 3U);
}

TEST(Tree, NamesThatXmlCannotHoldAreMadeReadable)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "bell\a");
        model.addArrayProperty("\xFFT", DatasetType::Result10, Array1d<float>{1, 2, 3}, shape,
                               Step("One"));
    });
    EXPECT_EQ(ReadBack::floats(exportedGrid(file)->GetPointData(), "?T"), (Floats{1, 2, 3}));
    Export::exportModel(file.path(), file.path("out.vtm"));
    EXPECT_EQ(ReadBack::nameOf(*ReadBack::blocks(file.path("out.vtm")), 0), "bell?");
}

TEST(Tree, AGroupDeepDownIsReached)
{
    constexpr int depth = 300;
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        for (int i = 0; i < depth; ++i)
            model.addNode(NodeType::Group, "group");
        addTriangle(model, "part");
    });
    EXPECT_EQ(ReadBack::points(*exportedGrid(file)), triangleNodes());
}

} // namespace
