#include "Exported.h"
#include "mox/Command.h"

#include <vtkPointData.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

using namespace ExportTest;

using Entries = std::vector<std::pair<double, std::string>>;

void addField(Model& model, unsigned int shape, std::string const& name, float value,
              Step const& step)
{
    model.addArrayProperty(name, DatasetType::Result10, Array1d<float>(3, value), shape, step);
}

TEST(Collection, OfOneShapeHasAGridForEachStep)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "part");
        addField(model, shape, "T", 1, timed("One", 0));
        addField(model, shape, "T", 2, timed("Two", 1));
        addField(model, shape, "only then", 3, timed("Two", 1));
        addField(model, shape, "T", 4, timed("Three", 2));
        addField(model, shape, "always", 5, Step());
    });
    Export::exportModel(file.path(), file.path("out.pvd"));
    EXPECT_EQ(ReadBack::collection(file.path("out.pvd")),
              (Entries{{0, "out/step_1.vtu"}, {1, "out/step_2.vtu"}, {2, "out/step_3.vtu"}}));
    std::vector<float> const values = {1, 2, 4};
    for (std::size_t step = 0; step < values.size(); ++step) {
        auto const grid =
            ReadBack::grid(file.path("out/step_" + std::to_string(step + 1) + ".vtu"));
        EXPECT_EQ(ReadBack::floats(grid->GetPointData(), "T"), Floats(3, values[step]));
        EXPECT_EQ(ReadBack::floats(grid->GetPointData(), "always"), Floats(3, 5));
        EXPECT_EQ(grid->GetPointData()->HasArray("only then") != 0, step == 1);
        EXPECT_EQ(ReadBack::points(*grid), triangleNodes());
    }
}

TEST(Collection, OfSeveralShapesHasBlocksForEachStep)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const first = addTriangle(model, "first");
        leaveShape(model);
        unsigned int const second = addTriangle(model, "second");
        addField(model, first, "T", 1, timed("One", 0));
        addField(model, second, "T", 2, timed("One", 0));
        addField(model, second, "T", 3, timed("Two", 1));
    });
    Export::exportModel(file.path(), file.path("out.pvd"));
    EXPECT_EQ(ReadBack::collection(file.path("out.pvd")),
              (Entries{{0, "out/step_1.vtm"}, {1, "out/step_2.vtm"}}));
    auto const early = ReadBack::blocks(file.path("out/step_1.vtm"));
    auto const late = ReadBack::blocks(file.path("out/step_2.vtm"));
    auto const fieldOf = [](vtkMultiBlockDataSet& blocks, unsigned int index) {
        return vtkUnstructuredGrid::SafeDownCast(blocks.GetBlock(index))->GetPointData();
    };
    EXPECT_EQ(ReadBack::floats(fieldOf(*early, 0), "T"), Floats(3, 1));
    EXPECT_EQ(ReadBack::floats(fieldOf(*early, 1), "T"), Floats(3, 2));
    EXPECT_EQ(fieldOf(*late, 0)->HasArray("T"), 0);
    EXPECT_EQ(ReadBack::floats(fieldOf(*late, 1), "T"), Floats(3, 3));
}

/// The first file of an index.
ModelFile firstPart()
{
    return ModelFile([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "part");
        addField(model, shape, "T", 1, timed("One", 0));
        leaveShape(model);
        addTriangle(model, "other");
    });
}

/// Makes an index of three files, of which the second has a step more, and the third nothing.
void addOtherParts(ModelFile const& file)
{
    Model second;
    second.saveTo(file.path("second.mox"));
    second.addNode(NodeType::RootGroup, "root");
    unsigned int const shape = addTriangle(second, "part");
    addField(second, shape, "T", 2, timed("Two", 1));
    addField(second, shape, "T", 3, timed("One", 0));
    second.close();
    Model third;
    third.saveTo(file.path("third.mox"));
    third.close();
    std::ofstream(file.path("set.moxs"))
        << R"({"format": "moxwriter partitioned model", "version": 1, "complete": false, "ranks": 3,
               "files": [{"name": "model.mox", "ranks": [[0, 0]]},
                         {"name": "second.mox", "ranks": [[1, 1]]},
                         {"name": "third.mox", "ranks": [[2, 2]]}]})";
}

TEST(Collection, OfAnIndexHasAGridForEachFileAndStep)
{
    ModelFile const file = firstPart();
    addOtherParts(file);
    Export::ExportSummary const summary =
        Export::exportModel(file.path("set.moxs"), file.path("out.pvd"));
    EXPECT_EQ(ReadBack::collection(file.path("out.pvd")), (Entries{{0, "out/part_1/step_1.vtu"},
                                                                   {1, "out/part_1/step_2.vtu"},
                                                                   {0, "out/part_2/step_1.vtu"},
                                                                   {1, "out/part_2/step_2.vtu"}}));
    auto const first = ReadBack::grid(file.path("out/part_1/step_1.vtu"));
    EXPECT_EQ(first->GetNumberOfPoints(), 6);
    EXPECT_EQ(ReadBack::floats(first->GetPointData(), "T")[0], 1);
    EXPECT_EQ(ReadBack::grid(file.path("out/part_1/step_2.vtu"))->GetPointData()->HasArray("T"), 0);
    auto const late = ReadBack::grid(file.path("out/part_2/step_2.vtu"));
    EXPECT_EQ(ReadBack::floats(late->GetPointData(), "T"), Floats(3, 2));
    EXPECT_EQ(summary.steps, (std::vector<std::string>{"One", "Two"}));
    EXPECT_EQ(summary.shapes, 3U);
    EXPECT_EQ(summary.files, 5U);
    EXPECT_EQ(summary.warnings, std::vector<std::string>{"\"third.mox\" has no shapes."});
}

TEST(Collection, OfAnIndexMayHaveOneStepOnly)
{
    ModelFile const file = firstPart();
    addOtherParts(file);
    Export::ExportOptions options;
    options.step = "Two";
    Export::exportModel(file.path("set.moxs"), file.path("out.pvd"), options);
    EXPECT_EQ(ReadBack::collection(file.path("out.pvd")),
              (Entries{{1, "out/part_1/step_1.vtu"}, {1, "out/part_2/step_1.vtu"}}));
    options.step = "Three";
    EXPECT_THROW(Export::exportModel(file.path("set.moxs"), file.path("no.pvd"), options),
                 Export::Error);
}

TEST(Collection, OfAnIndexIsNotMadeOfSomeOfItsFiles)
{
    ModelFile const file = firstPart();
    addOtherParts(file);
    std::filesystem::remove(file.path("second.mox"));
    try {
        Export::exportModel(file.path("set.moxs"), file.path("out.pvd"));
        FAIL();
    } catch (Export::Error const& error) {
        EXPECT_EQ(error.what(), file.path("set.moxs") + ": \"second.mox\" of rank 1 is missing");
    }
    EXPECT_FALSE(std::filesystem::exists(file.path("out.pvd")));
}

TEST(Collection, OfAnIndexIsOneForEachFileIfWanted)
{
    ModelFile const file = firstPart();
    addOtherParts(file);
    MoxTest::Outcome const outcome =
        MoxTest::run("export --parts " + file.path("set.moxs") + " " + file.path("out.vtu"));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(ReadBack::grid(file.path("out.0.vtu"))->GetNumberOfPoints(), 6);
    EXPECT_EQ(ReadBack::grid(file.path("out.1.vtu"))->GetNumberOfPoints(), 3);
    EXPECT_EQ(ReadBack::grid(file.path("out.2.vtu"))->GetNumberOfPoints(), 0);
}

TEST(Collection, OfAModelWithoutStepsHasOneEntry)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        addField(model, addTriangle(model, "part"), "T", 1, Step());
    });
    auto const summary = Export::exportModel(file.path(), file.path("out.pvd"));
    EXPECT_TRUE(summary.steps.empty());
    EXPECT_EQ(ReadBack::collection(file.path("out.pvd")), (Entries{{0, "out/step_1.vtu"}}));
    EXPECT_EQ(ReadBack::floats(ReadBack::grid(file.path("out/step_1.vtu"))->GetPointData(), "T"),
              Floats(3, 1));
}

TEST(Collection, OfOneStepHasThatOnly)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "part");
        addField(model, shape, "T", 1, timed("One", 0.5F));
        addField(model, shape, "T", 2, timed("Two", 1));
    });
    Export::ExportOptions options;
    options.step = "One";
    Export::exportModel(file.path(), file.path("out.pvd"), options);
    EXPECT_EQ(ReadBack::collection(file.path("out.pvd")), (Entries{{0.5, "out/step_1.vtu"}}));
}

TEST(Collection, FilesAreListedInTheOrderOfManySteps)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "part");
        for (int step = 1; step <= 11; ++step)
            addField(model, shape, "T", static_cast<float>(step), Step(std::to_string(step)));
    });
    Export::exportModel(file.path(), file.path("out.pvd"));
    auto const entries = ReadBack::collection(file.path("out.pvd"));
    ASSERT_EQ(entries.size(), 11U);
    EXPECT_EQ(entries[1].second, "out/step_02.vtu");
    EXPECT_EQ(entries[10].second, "out/step_11.vtu");
}

TEST(Collection, NodesMoveWithTheirCoordinatesOfEachStep)
{
    Floats const moved = {0, 0, 1, 1, 0, 1, 0, 1, 1};
    ModelFile const file([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "part");
        addField(model, shape, "T", 1, timed("One", 0));
        model.addArrayProperty(DatasetType::Coordinates, rows(3, moved), shape, timed("Two", 1));
        addField(model, shape, "T", 1, timed("Three", 2));
    });
    Export::exportModel(file.path(), file.path("out.pvd"));
    EXPECT_EQ(ReadBack::points(*ReadBack::grid(file.path("out/step_1.vtu"))), triangleNodes());
    EXPECT_EQ(ReadBack::points(*ReadBack::grid(file.path("out/step_2.vtu"))), moved);
    EXPECT_EQ(ReadBack::points(*ReadBack::grid(file.path("out/step_3.vtu"))), triangleNodes());
}

} // namespace
