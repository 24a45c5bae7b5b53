#include "Exported.h"

#include <vtkCellData.h>
#include <vtkPointData.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace ExportTest;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

Step stepOne()
{
    return Step("One");
}

void expectSame(Floats const& values, Floats const& expected)
{
    ASSERT_EQ(values.size(), expected.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_TRUE(std::isnan(expected[i]) ? std::isnan(values[i]) : values[i] == expected[i])
            << i << ": " << values[i];
}

TEST(Fields, AreCarriedValueByValue)
{
    Floats const scalar = {1, -2.5F, 1e-38F};
    Floats const vector = {1, 2, 3, 4, 5, 6, 7, 8, 9.25F};
    Floats const tensor = {1, 2, 3, 4, 5, 6};
    auto const grid = exportedGrid(ModelFile([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "part");
        model.addArrayProperty("Temperature", DatasetType::Result10, Array1d<float>(scalar), shape,
                               stepOne());
        model.addArrayProperty(DatasetType::Displacement, rows(3, vector), shape, stepOne());
        model.addArrayProperty("STRESS", DatasetType::Result17, rows(6, tensor), shape, stepOne());
        model.addArrayProperty("Normal", DatasetType::Result15, rows(3, {0, 0, 1}), shape, Step());
    }));
    EXPECT_EQ(ReadBack::floats(grid->GetPointData(), "Temperature"), scalar);
    EXPECT_EQ(ReadBack::floats(grid->GetPointData(), "Displacement"), vector);
    EXPECT_EQ(grid->GetPointData()->GetArray("Displacement")->GetNumberOfComponents(), 3);
    EXPECT_EQ(ReadBack::floats(grid->GetCellData(), "STRESS"), tensor);
    EXPECT_EQ(grid->GetCellData()->GetArray("STRESS")->GetNumberOfComponents(), 6);
    EXPECT_EQ(ReadBack::floats(grid->GetCellData(), "Normal"), (Floats{0, 0, 1}));
}

TEST(Fields, KeepWhatIsNoNumber)
{
    Floats const values = {nan, std::numeric_limits<float>::infinity(), -0.0F};
    auto const grid = exportedGrid(ModelFile([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>(values),
                               addTriangle(model, "part"), stepOne());
    }));
    Floats const read = ReadBack::floats(grid->GetPointData(), "T");
    expectSame(read, values);
    EXPECT_TRUE(std::signbit(read[2]));
}

TEST(Fields, OfIntegersStayUnsigned)
{
    Numbers const values = {0, 4294967295U, 16777217U};
    auto const grid = exportedGrid(ModelFile([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        model.addArrayProperty("Node Set fixed", DatasetType::Result10,
                               Array1d<unsigned int>(values), addTriangle(model, "part"), Step());
    }));
    EXPECT_EQ(ReadBack::numbers(grid->GetPointData(), "Node Set fixed"), values);
}

TEST(Fields, ThatOnlySomeShapesHaveAreNanOrZeroOnTheOthers)
{
    auto const grid = exportedGrid(ModelFile([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const first = addTriangle(model, "first");
        leaveShape(model);
        unsigned int const second = addTriangle(model, "second");
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{1, 2, 3}, second,
                               stepOne());
        model.addArrayProperty("E", DatasetType::Result14, Array1d<float>{7}, first, stepOne());
        model.addArrayProperty("Set", DatasetType::Result10, Array1d<unsigned int>{1, 1, 1}, first,
                               Step());
    }));
    expectSame(ReadBack::floats(grid->GetPointData(), "T"), {nan, nan, nan, 1, 2, 3});
    expectSame(ReadBack::floats(grid->GetCellData(), "E"), {7, nan});
    EXPECT_EQ(ReadBack::numbers(grid->GetPointData(), "Set"), (Numbers{1, 1, 1, 0, 0, 0}));
}

TEST(Fields, OfOneNameThatDoNotFitIntoOneArrayGetArraysOfTheirOwn)
{
    ModelFile const file([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const first = addTriangle(model, "first");
        leaveShape(model);
        unsigned int const second = addTriangle(model, "second");
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{1, 2, 3}, first,
                               stepOne());
        model.addArrayProperty("T", DatasetType::Result10, Array1d<unsigned int>{4, 5, 6}, second,
                               stepOne());
    });
    auto const summary = Export::exportModel(file.path(), file.path("out.vtu"));
    auto const grid = ReadBack::grid(file.path("out.vtu"));
    expectSame(ReadBack::floats(grid->GetPointData(), "T"), {1, 2, 3, nan, nan, nan});
    EXPECT_EQ(ReadBack::numbers(grid->GetPointData(), "T (2)"), (Numbers{0, 0, 0, 4, 5, 6}));
    EXPECT_EQ(summary.warnings, std::vector<std::string>{
                                    "Some datasets \"T\" don't fit into one array, so that there "
                                    "is also \"T (2)\"."});
}

TEST(Fields, OfTheSameNameOnNodesAndElementsAreApart)
{
    auto const grid = exportedGrid(ModelFile([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "part");
        model.addArrayProperty("on nodes", DatasetType::Result10, Array1d<float>{1, 2, 3}, shape,
                               stepOne());
        model.addArrayProperty("on elements", DatasetType::Result14, Array1d<float>{4}, shape,
                               stepOne());
    }));
    EXPECT_EQ(ReadBack::floats(grid->GetPointData(), "on nodes"), (Floats{1, 2, 3}));
    EXPECT_EQ(ReadBack::floats(grid->GetCellData(), "on elements"), (Floats{4}));
    EXPECT_EQ(grid->GetCellData()->GetArray("on nodes"), nullptr);
}

TEST(Fields, ThatFitNeitherNodesNorElementsAreLeftOutWithAWarning)
{
    ModelFile const file([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "part");
        model.addArrayProperty("short", DatasetType::Result10, Array1d<float>{1, 2}, shape,
                               stepOne());
        model.addArrayProperty("long", DatasetType::Result14, Array1d<float>{1, 2}, shape,
                               stepOne());
        model.addArrayProperty("other", DatasetType::Result18, Array1d<float>{1, 2, 3}, shape,
                               stepOne());
    });
    auto const summary = Export::exportModel(file.path(), file.path("out.vtu"));
    EXPECT_EQ(
        summary.warnings,
        (std::vector<std::string>{
            R"(The dataset "short" of the shape "part" has 2 rows for 3 nodes and is left out.)",
            R"(The dataset "long" of the shape "part" has 2 rows for 1 elements and is left out.)",
            R"(The dataset "other" of the shape "part" is of variable type 20, which is )"
            R"(neither on nodes nor on elements, and is left out.)"}));
    EXPECT_TRUE(summary.fields.empty());
}

TEST(Fields, NodeAndElementNumbersAreGlobalIdsWhenNoTwoAreAlike)
{
    ModelFile const file([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const first = addTriangle(model, "first");
        model.addArrayProperty(DatasetType::NodeIds, Array1d<unsigned int>{10, 20, 30}, first,
                               Step());
        model.addArrayProperty(DatasetType::ElementIds, Array1d<unsigned int>{5}, first, Step());
        leaveShape(model);
        unsigned int const second = addTriangle(model, "second");
        model.addArrayProperty(DatasetType::NodeIds, Array1d<unsigned int>{30, 40, 50}, second,
                               Step());
        model.addArrayProperty(DatasetType::ElementIds, Array1d<unsigned int>{6}, second, Step());
    });
    auto const grid = exportedGrid(file);
    EXPECT_EQ(ReadBack::numbers(grid->GetPointData(), "Node Ids"),
              (Numbers{10, 20, 30, 30, 40, 50}));
    EXPECT_EQ(grid->GetPointData()->GetGlobalIds(), nullptr);
    EXPECT_EQ(ReadBack::ids(grid->GetCellData(), "Element IDs"), (std::vector<vtkIdType>{5, 6}));
    ASSERT_NE(grid->GetCellData()->GetGlobalIds(), nullptr);
    EXPECT_STREQ(grid->GetCellData()->GetGlobalIds()->GetName(), "Element IDs");
}

} // namespace
