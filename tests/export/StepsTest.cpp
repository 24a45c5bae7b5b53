#include "Exported.h"

#include <vtkPointData.h>

#include <gtest/gtest.h>

namespace {

using namespace ExportTest;

using Times = std::vector<double>;

/// A shape that has a field, all of its values being the number of the step.
ModelFile withSteps(std::vector<Step> const& steps)
{
    return ModelFile([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "part");
        float value = 0;
        for (Step const& step : steps) {
            ++value;
            model.addArrayProperty("T", DatasetType::Result10, Array1d<float>(3, value), shape,
                                   step);
        }
    });
}

Times timesOf(ModelFile const& file)
{
    Export::exportModel(file.path(), file.path("out.pvd"));
    Times times;
    for (auto const& [time, name] : ReadBack::collection(file.path("out.pvd")))
        times.push_back(time);
    return times;
}

Step attributed(std::string const& name, Attributes const& attributes)
{
    return Step(name, attributes);
}

TEST(Steps, TheLastIsExportedUnlessAnotherIsNamed)
{
    ModelFile const file = withSteps({Step("One"), Step("Two"), Step("Three")});
    EXPECT_EQ(ReadBack::floats(exportedGrid(file)->GetPointData(), "T"), (Floats{3, 3, 3}));
    Export::ExportOptions options;
    options.step = "Two";
    options.overwrite = true;
    EXPECT_EQ(ReadBack::floats(exportedGrid(file, options)->GetPointData(), "T"),
              (Floats{2, 2, 2}));
}

TEST(Steps, WithoutTimesAreNumbered)
{
    EXPECT_EQ(timesOf(withSteps({Step("One"), Step("Two"), Step("Three")})), (Times{1, 2, 3}));
}

TEST(Steps, WithTimesComeInTheirOrder)
{
    ModelFile const file = withSteps({timed("late", 0.5F), timed("early", 0.25F)});
    EXPECT_EQ(timesOf(file), (Times{0.25, 0.5}));
    EXPECT_EQ(ReadBack::floats(ReadBack::grid(file.path("out/step_1.vtu"))->GetPointData(), "T"),
              (Floats{2, 2, 2}));
}

TEST(Steps, TakeTheExactTimeBeforeTheRoundedOne)
{
    Attributes attributes;
    attributes.set("Time", 0.1F);
    attributes.set("TimeText", "0.1");
    attributes.set("Value", 7.0F);
    EXPECT_EQ(timesOf(withSteps({attributed("One", attributes)})), Times{0.1});
}

TEST(Steps, TakeATimeThatIsNotTextForGiven)
{
    Attributes attributes;
    attributes.set("Time", 0.5F);
    attributes.set("TimeText", "soon");
    EXPECT_EQ(timesOf(withSteps({attributed("One", attributes)})), Times{0.5});
}

TEST(Steps, FrequenciesAndValuesServeAsTimes)
{
    Attributes mode;
    mode.set("Frequency", 50.0F);
    Attributes buckling;
    buckling.set("Value", -2.5F);
    EXPECT_EQ(timesOf(withSteps({attributed("Mode 1", mode), attributed("Buckling 1", buckling)})),
              (Times{50, -2.5}));
}

TEST(Steps, OfTheSameTimeAreNumberedWithAWarning)
{
    ModelFile const file = withSteps({timed("One", 1), timed("Two", 1)});
    EXPECT_EQ(timesOf(file), (Times{1, 2}));
    Export::ExportOptions options;
    options.overwrite = true;
    EXPECT_EQ(Export::exportModel(file.path(), file.path("out.pvd"), options).warnings,
              std::vector<std::string>{
                  "Some steps have the same time, so that the steps are numbered instead."});
}

TEST(Steps, AMissingOneIsTold)
{
    ModelFile const file = withSteps({Step("One")});
    for (std::string const name : {"Two", ""}) {
        Export::ExportOptions options;
        options.step = name;
        try {
            Export::exportModel(file.path(), file.path("out.vtu"), options);
            FAIL();
        } catch (Export::Error const& error) {
            EXPECT_EQ(error.what(), file.path() + ": There is no step \"" + name + "\".");
        }
    }
    EXPECT_EQ(file.folder().names(), std::vector<std::string>{"model.mox"});
}

TEST(Steps, ASummaryNamesThem)
{
    ModelFile const file = withSteps({Step("One"), Step("Two")});
    auto const summary = Export::exportModel(file.path(), file.path("out.pvd"));
    EXPECT_EQ(summary.steps, (std::vector<std::string>{"One", "Two"}));
    EXPECT_EQ(summary.fields, std::vector<std::string>{"T"});
    EXPECT_EQ(summary.files, 3U);
}

TEST(Steps, ProgressIsToldOfTheMeshAndOfEachStepReadAndWritten)
{
    using Stages = std::vector<std::pair<std::size_t, std::size_t>>;
    ModelFile const file = withSteps({Step("One"), Step("Two")});
    Stages told;
    Export::ExportOptions options;
    options.progress = [&](std::size_t done, std::size_t all) { told.emplace_back(done, all); };
    Export::exportModel(file.path(), file.path("out.pvd"), options);
    EXPECT_EQ(told, (Stages{{1, 5}, {2, 5}, {3, 5}, {4, 5}, {5, 5}}));
    told.clear();
    Export::exportModel(file.path(), file.path("out.vtu"), options);
    EXPECT_EQ(told, (Stages{{1, 3}, {2, 3}, {3, 3}}));
}

} // namespace
