#include "mox/commands/DiffCommand.h"

#include "mox/Command.h"
#include "mox/ModelFile.h"
#include "moxread/Sample.h"
#include "moxread/TestFile.h"
#include "support/Environment.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;
using MoxTest::ModelFile;

namespace {

using Mox::DiffArguments;
using Mox::diffFiles;
using Mox::Tolerance;

using Values = std::vector<float>;

/// A model in which each thing can be told to be another.
struct Plan
{
    std::string root = "root";
    std::vector<std::string> shapes = {"/root/a", "/root/b"};
    int number = 1;
    double level = 0.5;
    float transparency = 0;
    std::vector<float> translation = {1, 2, 3};
    Values temperatures = {1, 2, 3, 4};
    std::vector<unsigned int> ids = {1, 2, 3, 4};
    std::string step = "load";
    std::string dataset = "T";
    bool hasIds = true;
};

ModelFile modelOf(Plan const& plan)
{
    return ModelFile([&plan](Model& model) {
        Attributes attributes;
        attributes.set("number", plan.number);
        attributes.set("level", plan.level);
        model.addNode(NodeType::RootGroup, plan.root, attributes);
        NodeProperties transform;
        transform.set(PropertyType::Translation, plan.translation);
        model.setNodeData(1, transform);
        Array1d<unsigned int> const shapes = model.addAssemblyComponents(plan.shapes);
        NodeProperties look;
        look.set(PropertyType::Transparency, static_cast<double>(plan.transparency));
        model.setNodeData(shapes[0], look);
        if (plan.hasIds)
            model.addArrayProperty(DatasetType::NodeIds, Array1d<unsigned int>(plan.ids), shapes[0],
                                   Step());
        model.addArrayProperty(plan.dataset, DatasetType::Result10,
                               Array1d<float>(plan.temperatures), shapes[0],
                               Step(plan.step, attributes));
    });
}

MoxTest::Outcome diffOf(std::string const& left, std::string const& right,
                        Tolerance const& tolerance = {}, bool json = false)
{
    std::ostringstream out;
    std::ostringstream err;
    DiffArguments options;
    options.left = left;
    options.right = right;
    options.tolerance = tolerance;
    options.json = json;
    int const status = diffFiles(options, out, err);
    return {status, out.str(), err.str()};
}

std::string differences(Plan const& left, Plan const& right, Tolerance const& tolerance = {})
{
    ModelFile const one(modelOf(left));
    ModelFile const other(modelOf(right));
    MoxTest::Outcome const outcome = diffOf(one.path(), other.path(), tolerance);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, outcome.out.empty() ? 0 : 1);
    return outcome.out;
}

/// What differs when one thing is changed.
std::string changed(std::function<void(Plan&)> const& change, Tolerance const& tolerance = {})
{
    Plan other;
    change(other);
    return differences(Plan(), other, tolerance);
}

TEST(DiffCommand, EqualModelsHaveNoDifferences)
{
    EXPECT_EQ(differences(Plan(), Plan()), "");
}

TEST(DiffCommand, AFileIsEqualToItself)
{
    const MoxReadTest::TemporaryFile file(MoxReadTest::Sample().file());
    MoxTest::Outcome const outcome = diffOf(file.path(), file.path());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
}

TEST(DiffCommand, WhoWroteAFileAndHowItIsCompressedMakesNoDifference)
{
    MoxReadTest::Sample sample;
    const MoxReadTest::TemporaryFile one(sample.file());
    std::vector<MoxReadTest::TestBlock> blocks = sample.plainBlocks();
    std::size_t const host = blocks[5].block.find("host");
    blocks[5].block.replace(host, 4, "tsoh");
    std::rotate(blocks.begin(), blocks.begin() + 2, blocks.end());
    const MoxReadTest::TemporaryFile other(MoxReadTest::assemble(MoxReadTest::slotsFor(blocks)));
    EXPECT_EQ(diffOf(one.path(), other.path()).out, "");
}

TEST(DiffCommand, DatasetsThatShareTheirValuesAreEqualToCopies)
{
    auto const modelWith = [](bool shared) {
        return ModelFile([shared](Model& model) {
            model.addNode(NodeType::RootGroup, "root");
            Array1d<unsigned int> const shapes =
                model.addAssemblyComponents({"/root/a", "/root/b"});
            Array1d<float> const values(3, 1.5F);
            if (shared)
                model.addArrayProperty("T", DatasetType::Result10, values, shapes, Step());
            for (std::size_t i = 0; i < 2 && !shared; ++i)
                model.addArrayProperty("T", DatasetType::Result10, values, shapes[i], Step());
        });
    };
    ModelFile const shared(modelWith(true));
    ModelFile const copied(modelWith(false));
    EXPECT_EQ(diffOf(shared.path(), copied.path()).out, "");
}

TEST(DiffCommand, TellsOfNodesThatOnlyOneHas)
{
    EXPECT_EQ(changed([](Plan& plan) {
                  plan.shapes = {"/root/a", "/root/c"};
              }),
              "\"root/b\": only in A, Shape with 1 below\n"
              "\"root/c\": only in B, Shape with 1 below\n"
              "2 differences\n");
}

TEST(DiffCommand, TellsOfAnotherOrderOfChildren)
{
    Plan left;
    left.shapes = {"/root/a", "/root/b", "/root/c"};
    ModelFile const one(modelOf(left));
    ModelFile const other([](Model& model) {
        Attributes attributes;
        attributes.set("number", 1);
        attributes.set("level", 0.5);
        model.addNode(NodeType::RootGroup, "root", attributes);
        model.addAssemblyComponents({"/root/c", "/root/b", "/root/a"});
    });
    EXPECT_NE(diffOf(one.path(), other.path())
                  .out.find("\"root\" order of children: one order in A, another in B\n"),
              std::string::npos);
}

TEST(DiffCommand, TellsOfAnotherNameOfTheRoot)
{
    EXPECT_EQ(changed([](Plan& plan) {
                  plan.root = "top";
                  plan.shapes = {"/top/a", "/top/b"};
              }),
              "\"root\" name: \"root\" in A, \"top\" in B\n1 difference\n");
}

TEST(DiffCommand, TellsOfAnotherType)
{
    ModelFile const one([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        model.addNode(NodeType::Group, "a");
    });
    ModelFile const other([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        model.addNode(NodeType::Shape, "a");
    });
    EXPECT_EQ(diffOf(one.path(), other.path()).out, "\"root/a\" type: Group in A, Shape in B\n"
                                                    "\"root/a/a\": only in B, Geometry\n"
                                                    "2 differences\n");
}

TEST(DiffCommand, TellsOfTransformsMaterialsAndAttributes)
{
    EXPECT_EQ(changed([](Plan& plan) {
                  plan.translation = {1, 2, 4};
              }),
              "\"root\" transform \"translation\": 1 2 3 in A, 1 2 4 in B\n1 difference\n");
    EXPECT_EQ(changed([](Plan& plan) { plan.transparency = 0.25F; }),
              "\"root/a\" material \"transparency\": 0 in A, 0.25 in B\n1 difference\n");
    EXPECT_EQ(changed([](Plan& plan) { plan.number = 2; }),
              "\"root\" attribute \"number\": 1 in A, 2 in B\n"
              "\"root/a\" dataset \"T\" step \"load\" attribute \"number\": 1 in A, 2 in B\n"
              "2 differences\n");
}

TEST(DiffCommand, TellsOfDatasetsAndStepsThatOnlyOneHas)
{
    EXPECT_EQ(changed([](Plan& plan) { plan.hasIds = false; }),
              "\"root/a\" dataset \"Node Ids\": only in A, type 12, uint32, width 1, 4 rows\n"
              "1 difference\n");
    EXPECT_EQ(
        changed([](Plan& plan) { plan.step = "other"; }),
        "step \"load\": only in A, 1 dataset\n"
        "step \"other\": only in B, 1 dataset\n"
        "\"root/a\" dataset \"T\" step \"load\": only in A, type 12, float, width 1, 4 rows\n"
        "\"root/a\" dataset \"T\" step \"other\": only in B, type 12, float, width 1, 4 rows\n"
        "4 differences\n");
}

TEST(DiffCommand, TellsOfOtherShapes)
{
    EXPECT_EQ(changed([](Plan& plan) {
                  plan.temperatures = {1, 2, 3};
              }),
              "\"root/a\" dataset \"T\" step \"load\": type 12, float, width 1, 4 rows in A, "
              "type 12, float, width 1, 3 rows in B\n1 difference\n");
}

TEST(DiffCommand, TellsHowManyRowsDifferAndWhereMost)
{
    EXPECT_EQ(changed([](Plan& plan) {
                  plan.temperatures = {1.5F, 2, 3, 5};
              }),
              "\"root/a\" dataset \"T\" step \"load\": 2 of 4 rows differ, at most by 1 in row 3 "
              "(4 in A, 5 in B), relatively by 0.33333334 in row 0 (1 in A, 1.5 in B)\n"
              "1 difference\n");
    EXPECT_EQ(changed([](Plan& plan) {
                  plan.ids = {1, 2, 3, 4294967295U};
              }),
              "\"root/a\" dataset \"Node Ids\": 1 of 4 rows differ, at most by 4294967291 in row "
              "3 (4 in A, 4294967295 in B), relatively by 1 in row 3 (4 in A, 4294967295 in B)\n"
              "1 difference\n");
}

TEST(DiffCommand, NaNIsEqualToNaN)
{
    Plan left;
    left.temperatures = {NAN, 2, -NAN, INFINITY};
    EXPECT_EQ(differences(left, left), "");
    Plan right = left;
    right.temperatures = {1, 2, NAN, INFINITY};
    EXPECT_EQ(differences(left, right),
              "\"root/a\" dataset \"T\" step \"load\": 1 of 4 rows differ, 1 values are NaN in one "
              "only\n1 difference\n");
}

TEST(DiffCommand, FloatsWithinTheToleranceAreEqual)
{
    auto const change = [](Plan& plan) {
        plan.temperatures = {1.25F, 2, 3, 4.5F};
        plan.translation = {1, 2, 3.5F};
        plan.level = 0.75;
    };
    EXPECT_EQ(changed(change, {0.5, 0}), "");
    EXPECT_EQ(changed(change, {0, 0.5}), "");
    EXPECT_NE(changed(change, {0.375, 0}), "");
    EXPECT_NE(changed([](Plan& plan) { plan.ids = {1, 2, 3, 5}; }, {10, 1}), "");
    EXPECT_NE(changed([](Plan& plan) { plan.number = 2; }, {10, 1}), "");
}

TEST(DiffCommand, JsonHasEveryDifference)
{
    Plan plan;
    plan.temperatures = {1, 2, 3, INFINITY};
    plan.hasIds = false;
    ModelFile const one(modelOf(Plan()));
    ModelFile const other(modelOf(plan));
    MoxTest::Outcome const outcome = diffOf(one.path(), other.path(), {}, true);
    EXPECT_EQ(outcome.status, 1);
    nlohmann::json const json = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(json.at("a"), one.path());
    EXPECT_EQ(json.at("equal"), false);
    nlohmann::json const& all = json.at("differences");
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all.at(0), nlohmann::json::parse(R"({
        "kind": "dataset", "path": "root/a", "dataset": "Node Ids", "step": null,
        "property": null, "a": "type 12, uint32, width 1, 4 rows", "b": null, "values": null})"));
    EXPECT_EQ(all.at(1).at("kind"), "values");
    EXPECT_EQ(all.at(1).at("step"), "load");
    EXPECT_EQ(all.at(1).at("values"), nlohmann::json::parse(R"({
        "rows": 4, "differingRows": 1, "notNumbers": 0,
        "largestAbsolute": {"difference": "Infinity", "row": 3, "column": 0,
                            "a": 4, "b": "Infinity"},
        "largestRelative": {"difference": "Infinity", "row": 3, "column": 0,
                            "a": 4, "b": "Infinity"}})"));
    nlohmann::json const equal =
        nlohmann::json::parse(diffOf(one.path(), one.path(), {}, true).out);
    EXPECT_EQ(equal.at("equal"), true);
    EXPECT_TRUE(equal.at("differences").empty());
}

/// Thirty datasets of two blocks each, in ascending or in descending order.
ModelFile manyBlocks(bool ascending, float last)
{
    Support::DefaultBlockSizeSetting const setting("1000");
    return ModelFile([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "a");
        for (int i = 0; i < 30; ++i) {
            int const number = ascending ? i : 29 - i;
            Array1d<float> const values(200, number == 29 ? last : static_cast<float>(number));
            model.addArrayProperty("T" + std::to_string(number), DatasetType::Result10, values,
                                   shape, Step());
        }
    });
}

TEST(DiffCommand, ValuesMayLieInAnotherOrder)
{
    ModelFile const one(manyBlocks(true, 5));
    ModelFile const other(manyBlocks(false, 5));
    EXPECT_EQ(diffOf(one.path(), other.path()).out, "");
    ModelFile const different(manyBlocks(false, 6));
    EXPECT_EQ(
        diffOf(one.path(), different.path()).out,
        "\"root/a\" dataset \"T29\": 200 of 200 rows differ, at most by 1 in row 0 (5 in A, 6 "
        "in B), relatively by 0.16666667 in row 0 (5 in A, 6 in B)\n1 difference\n");
}

TEST(DiffCommand, WrongUsageHasStatus2)
{
    const MoxReadTest::TemporaryFile file(MoxReadTest::Sample().file());
    std::string const diff = "diff " + file.path() + " " + file.path();
    EXPECT_EQ(MoxTest::run(diff).status, 0);
    for (std::string const& arguments :
         {"diff " + file.path(), diff + " --tolerance", diff + " --tolerance x",
          diff + " --tolerance=-1", diff + " --relative nan", diff + " --relative inf"}) {
        MoxTest::Outcome const outcome = MoxTest::run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    }
}

} // namespace
