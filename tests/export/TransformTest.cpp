#include "Exported.h"

#include <vtkPointData.h>

#include <gtest/gtest.h>

namespace {

using namespace ExportTest;

constexpr float quarterTurn = 1.57079632679F;

/// A shape below two groups, the inner one with these properties.
ModelFile transformed(NodeProperties const& outer, NodeProperties const& inner,
                      DatasetType displacement, Floats const& values)
{
    return ModelFile([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const outerGroup = model.addNode(NodeType::Group, "outer");
        model.setNodeData(outerGroup, outer);
        unsigned int const innerGroup = model.addNode(NodeType::Group, "inner");
        model.setNodeData(innerGroup, inner);
        unsigned int const shape = addTriangle(model, "part");
        model.addArrayProperty(displacement, rows(values.size() / 3, values), shape, Step("One"));
        model.addArrayProperty("VELO", DatasetType::Result11, rows(3, {1, 0, 0, 0, 1, 0, 0, 0, 1}),
                               shape, Step("One"));
    });
}

NodeProperties transform(Floats const& translation, Floats const& rotation, Floats const& scale)
{
    NodeProperties properties;
    properties.set(PropertyType::Translation, translation);
    properties.set(PropertyType::Rotation, rotation);
    properties.set(PropertyType::Scale, scale);
    return properties;
}

void expectNear(Floats const& values, Floats const& expected)
{
    ASSERT_EQ(values.size(), expected.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_NEAR(values[i], expected[i], 1e-5) << i;
}

Floats const unitRows = {1, 0, 0, 0, 1, 0, 0, 0, 1};

TEST(TransformOfGroups, ScalesThenTurnsThenShiftsNodes)
{
    auto const grid = exportedGrid(
        transformed(NodeProperties(), transform({10, 20, 30}, {0, 0, 1, quarterTurn}, {2, 3, 4}),
                    DatasetType::Displacement, unitRows));
    expectNear(ReadBack::points(*grid), {10, 20, 30, 10, 22, 30, 7, 20, 30});
}

TEST(TransformOfGroups, DisplacementsAreScaledAndTurnedButNotShifted)
{
    auto const grid = exportedGrid(
        transformed(NodeProperties(), transform({10, 20, 30}, {0, 0, 1, quarterTurn}, {2, 3, 4}),
                    DatasetType::Displacement, unitRows));
    expectNear(ReadBack::floats(grid->GetPointData(), "Displacement"),
               {0, 2, 0, -3, 0, 0, 0, 0, 4});
}

TEST(TransformOfGroups, AnglesOfDisplacementsAreOnlyTurned)
{
    Floats const values = {1, 0, 0, 1, 0, 0, 0, 1, 0, 0, 1, 0, 0, 0, 1, 0, 0, 1};
    auto const grid = exportedGrid(
        transformed(NodeProperties(), transform({10, 20, 30}, {0, 0, 1, quarterTurn}, {2, 3, 4}),
                    DatasetType::Displacement6, values));
    expectNear(ReadBack::floats(grid->GetPointData(), "Displacement"),
               {0, 2, 0, 0, 1, 0, -3, 0, 0, -1, 0, 0, 0, 0, 4, 0, 0, 1});
}

TEST(TransformOfGroups, OtherVectorsStayAsTheyAre)
{
    auto const grid = exportedGrid(
        transformed(NodeProperties(), transform({1, 2, 3}, {0, 0, 1, quarterTurn}, {2, 3, 4}),
                    DatasetType::Displacement, unitRows));
    EXPECT_EQ(ReadBack::floats(grid->GetPointData(), "VELO"), unitRows);
}

TEST(TransformOfGroups, TheInnerOneComesFirst)
{
    auto const grid =
        exportedGrid(transformed(transform({0, 0, 5}, {1, 0, 0, quarterTurn}, {1, 1, 1}),
                                 transform({0, 1, 0}, {0, 0, 2, 2 * quarterTurn}, {1, 1, 1}),
                                 DatasetType::Displacement, unitRows));
    expectNear(ReadBack::points(*grid), {0, 0, 6, -1, 0, 6, 0, 0, 5});
    expectNear(ReadBack::floats(grid->GetPointData(), "Displacement"),
               {-1, 0, 0, 0, 0, -1, 0, -1, 0});
}

TEST(TransformOfGroups, ThatChangeNothingKeepEveryBit)
{
    Floats const values = {0.1F, 1e-38F, 16777216, -0.0F, 1, 3.4e38F, 0, 0, 0};
    auto const grid = exportedGrid(
        transformed(NodeProperties(), NodeProperties(), DatasetType::Displacement, values));
    EXPECT_EQ(ReadBack::floats(grid->GetPointData(), "Displacement"), values);
    EXPECT_EQ(ReadBack::points(*grid), triangleNodes());
}

TEST(TransformOfGroups, WithoutAnAxisNothingTurns)
{
    auto const grid =
        exportedGrid(transformed(NodeProperties(), transform({0, 0, 0}, {0, 0, 0, 1}, {1, 1, 1}),
                                 DatasetType::Displacement, unitRows));
    EXPECT_EQ(ReadBack::points(*grid), triangleNodes());
}

} // namespace
