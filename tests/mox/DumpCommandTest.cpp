#include "mox/commands/DumpCommand.h"

#include "mox/Command.h"
#include "mox/ModelFile.h"
#include "support/Terminal.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstring>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;
using MoxTest::ModelFile;

namespace {

using Mox::DumpArguments;
using Mox::dumpDataset;

using Names = std::vector<std::string>;
using Change = std::function<void(DumpArguments&)>;

/// A group with two shapes that share their temperatures.
void buildModel(Model& model)
{
    model.addNode(NodeType::RootGroup, "root");
    Array1d<unsigned int> const shapes = model.addAssemblyComponents({"/root/a", "/root/b"});
    Array2d<float> const coordinates(2, 3, {0.1F, -1e-30F, 3, NAN, INFINITY, -INFINITY});
    model.addArrayProperty(DatasetType::Coordinates, coordinates, shapes[0], Step());
    Array1d<unsigned int> const ids(std::vector<unsigned int>{7, 4294967295U});
    model.addArrayProperty(DatasetType::NodeIds, ids, shapes[0], Step());
    StepList steps(2);
    steps.set(0, Step("early"));
    steps.set(1, Step("late"));
    Array1d<float> const temperatures(std::vector<float>{1.5F, 2.5F});
    model.addArrayProperty("T", DatasetType::Result10, temperatures, shapes, steps);
    Array2d<float> const stress(1, 6, {1, 2, 3, 4, 5, 6});
    model.addArrayProperty("S", DatasetType::Result13, stress, shapes[0], Step("early"));
}

DumpArguments optionsFor(ModelFile const& file, std::string const& node, std::string const& dataset,
                         Change const& change = {})
{
    DumpArguments options;
    options.file = file.path();
    options.node = node;
    options.dataset = dataset;
    if (change)
        change(options);
    return options;
}

MoxTest::Outcome dumped(DumpArguments const& options)
{
    std::ostringstream out;
    std::ostringstream err;
    int const status = dumpDataset(options, out, err);
    return {status, out.str(), err.str()};
}

Change toStep(std::string const& step)
{
    return [step](DumpArguments& options) { options.step = step; };
}

Change toFormat(std::string const& format)
{
    return [format](DumpArguments& options) { options.format = format; };
}

class DumpCommand : public testing::Test
{
protected:
    std::string text(std::string const& node, std::string const& dataset,
                     Change const& change = {}) const
    {
        MoxTest::Outcome const outcome = dumped(optionsFor(file, node, dataset, change));
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        return outcome.out;
    }

    std::string refusal(std::string const& node, std::string const& dataset,
                        Change const& change = {}) const
    {
        MoxTest::Outcome const outcome = dumped(optionsFor(file, node, dataset, change));
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err.substr(0, file.path().size() + 2), file.path() + ": ");
        return outcome.err.substr(std::min(outcome.err.size(), file.path().size() + 2));
    }

    ModelFile const file{buildModel};
};

/// The description of an array file, and what follows it.
struct Npy
{
    explicit Npy(std::string const& bytes)
    {
        EXPECT_EQ(bytes.substr(0, 8), std::string("\x93NUMPY\x01\x00", 8));
        std::size_t const length = static_cast<unsigned char>(bytes.at(8)) +
                                   256U * static_cast<unsigned char>(bytes.at(9));
        EXPECT_EQ((10 + length) % 64, 0U);
        description = bytes.substr(10, length);
        EXPECT_EQ(description.back(), '\n');
        description.erase(description.find_last_not_of(" \n") + 1);
        data = bytes.substr(10 + length);
    }

    std::string description;
    std::string data;
};

TEST_F(DumpCommand, TextHasALineForEachRow)
{
    EXPECT_EQ(text("root/a", "Coordinates"), "0.1 -1e-30 3\nnan inf -inf\n");
    EXPECT_EQ(text("root/a", "Node Ids"), "7\n4294967295\n");
}

TEST_F(DumpCommand, ShapesGeometriesAndIdsLeadToTheDatasets)
{
    EXPECT_EQ(text("root/a/a", "Node Ids"), "7\n4294967295\n");
    EXPECT_EQ(text("#2", "Node Ids"), "7\n4294967295\n");
    EXPECT_EQ(text("#3", "Node Ids"), "7\n4294967295\n");
}

TEST_F(DumpCommand, LinkedDatasetsHaveTheirTargetsValues)
{
    for (std::string const node : {"root/a", "root/b"})
        for (std::string const step : {"early", "late"})
            EXPECT_EQ(text(node, "T", toStep(step)), "1.5\n2.5\n");
}

TEST_F(DumpCommand, CsvBeginsWithTheNamesOfTheColumns)
{
    EXPECT_EQ(text("root/a", "Coordinates", toFormat("csv")),
              "x,y,z\n0.1,-1e-30,3\nnan,inf,-inf\n");
    EXPECT_EQ(text("root/a", "Node Ids", toFormat("csv")), "Node Ids\n7\n4294967295\n");
    EXPECT_EQ(text("root/a", "S",
                   [](DumpArguments& options) {
                       options.step = "early";
                       options.format = "csv";
                   }),
              "xx,yy,zz,xy,yz,zx\n1,2,3,4,5,6\n");
}

TEST_F(DumpCommand, ANameWithCommasAndQuotesIsOneColumn)
{
    ModelFile const other([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "a");
        model.addArrayProperty("x, \"y\"", DatasetType::Result10, Array1d<float>(1, 1), shape,
                               Step());
    });
    EXPECT_EQ(dumped(optionsFor(other, "root/a", "x, \"y\"", toFormat("csv"))).out,
              "\"x, \"\"y\"\"\"\n1\n");
}

TEST_F(DumpCommand, NpyHasTheBytesOfTheValues)
{
    Npy const floats(text("root/a", "Coordinates", toFormat("npy")));
    EXPECT_EQ(floats.description, "{'descr': '<f4', 'fortran_order': False, 'shape': (2, 3), }");
    ASSERT_EQ(floats.data.size(), 24U);
    std::vector<float> values(6);
    std::memcpy(values.data(), floats.data.data(), 24);
    EXPECT_EQ(values[0], 0.1F);
    EXPECT_EQ(values[2], 3.F);
    EXPECT_TRUE(std::isnan(values[3]));
    EXPECT_EQ(values[5], -INFINITY);
    Npy const ids(text("root/a", "Node Ids", toFormat("npy")));
    EXPECT_EQ(ids.description, "{'descr': '<u4', 'fortran_order': False, 'shape': (2,), }");
    EXPECT_EQ(ids.data, std::string("\x07\0\0\0\xFF\xFF\xFF\xFF", 8));
}

TEST_F(DumpCommand, JsonHasTheValuesInRows)
{
    auto const json = [this](std::string const& dataset) {
        return nlohmann::json::parse(
            text("root/a", dataset, [](DumpArguments& options) { options.json = true; }));
    };
    nlohmann::json const coordinates = json("Coordinates");
    EXPECT_EQ(coordinates.at("values").at(0).at(2), 3);
    EXPECT_EQ(coordinates.at("values").at(1), nlohmann::json({"NaN", "Infinity", "-Infinity"}));
    EXPECT_EQ(coordinates.at("columns"), nlohmann::json({"x", "y", "z"}));
    EXPECT_EQ(coordinates.at("path"), "root/a");
    EXPECT_EQ(coordinates.at("step"), nullptr);
    nlohmann::json const ids = json("Node Ids");
    EXPECT_EQ(ids.at("values"), nlohmann::json({7, 4294967295U}));
    EXPECT_EQ(ids.at("rows"), 2);
    EXPECT_EQ(ids.at("elementType"), "uint32");
}

TEST_F(DumpCommand, ManyRowsAreWrittenInPiecesWithoutALoss)
{
    std::vector<unsigned int> numbers(100000);
    std::string expected;
    for (unsigned int i = 0; i < numbers.size(); ++i) {
        numbers[i] = i * 40000U;
        expected += std::to_string(numbers[i]) + '\n';
    }
    ModelFile const large([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "a");
        model.addArrayProperty(DatasetType::NodeIds, Array1d<unsigned int>(numbers), shape, Step());
    });
    EXPECT_EQ(dumped(optionsFor(large, "root/a", "Node Ids")).out, expected);
    std::string const json =
        dumped(optionsFor(large, "root/a", "Node Ids", [](DumpArguments& options) {
            options.json = true;
        })).out;
    EXPECT_EQ(nlohmann::json::parse(json).at("values").get<std::vector<unsigned int>>(), numbers);
}

TEST_F(DumpCommand, TheOutputsEndingTellsTheFormat)
{
    auto const written = [this](std::string const& name, std::string const& format) {
        std::string const output = file.path(name);
        EXPECT_EQ(text("root/a", "Node Ids",
                       [&](DumpArguments& options) {
                           options.output = output;
                           options.format = format;
                       }),
                  "");
        return Support::contentOf(output);
    };
    EXPECT_EQ(written("ids", ""), "7\n4294967295\n");
    EXPECT_EQ(written("ids.csv", ""), "Node Ids\n7\n4294967295\n");
    EXPECT_EQ(Npy(written("ids.npy", "")).data.size(), 8U);
    EXPECT_EQ(written("text.npy", "text"), "7\n4294967295\n");
}

TEST_F(DumpCommand, AnExistingFileIsReplacedOnlyIfToldTo)
{
    std::string const output = file.folder().write("out", "before").string();
    auto const into = [&](bool overwrite) {
        return dumped(optionsFor(file, "root/a", "Node Ids", [&](DumpArguments& options) {
            options.output = output;
            options.overwrite = overwrite;
        }));
    };
    MoxTest::Outcome const refused = into(false);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, output + ": File exists.\n");
    EXPECT_EQ(Support::contentOf(output), "before");
    EXPECT_EQ(into(true).status, 0);
    EXPECT_EQ(Support::contentOf(output), "7\n4294967295\n");
    EXPECT_EQ(file.folder().names(), (Names{"model.mox", "out"}));
}

TEST_F(DumpCommand, WhatIsNotThereGetsOneSentence)
{
    EXPECT_EQ(refusal("root/c", "T"), "no node has the path \"root/c\"\n");
    EXPECT_EQ(refusal("root", "T"), "the node at \"root\" is no shape and carries no datasets\n");
    EXPECT_EQ(refusal("#x", "T"), "\"#x\" is no path: behind \"#\" there has to be a node's id\n");
    EXPECT_EQ(refusal("root/a", "U"), "\"root/a\" has no dataset \"U\"\n");
    EXPECT_EQ(refusal("root/a", "T"), "\"root/a\" has \"T\" for steps only: \"early\", \"late\"\n");
    EXPECT_EQ(refusal("root/a", "T", toStep("never")),
              "\"root/a\" has no \"T\" for the step \"never\", but for: \"early\", \"late\"\n");
    EXPECT_EQ(refusal("root/a", "Node Ids", toStep("early")),
              "\"root/a\" has no \"Node Ids\" for the step \"early\", but for: no step\n");
}

TEST_F(DumpCommand, ATargetThatCannotBeWrittenGetsOneSentence)
{
    for (std::string const& output : {file.path("absent/out"), file.folder().path("").string()}) {
        MoxTest::Outcome const outcome =
            dumped(optionsFor(file, "root/a", "Node Ids", [&](DumpArguments& options) {
                options.output = output;
                options.overwrite = true;
            }));
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.err.substr(0, output.size() + 2), output + ": ");
        EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
    }
    EXPECT_EQ(file.folder().names(), Names{"model.mox"});
}

TEST_F(DumpCommand, AFileThatMayNotGrowIsNotLeftBehind)
{
    ModelFile const large([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "a");
        model.addArrayProperty(DatasetType::NodeIds, Array1d<unsigned int>(100000, 1), shape,
                               Step());
    });
    // In blocks of 512 or 1024 bytes.
    MoxTest::Outcome const outcome = MoxTest::run(
        "dump " + large.path() + " root/a 'Node Ids' -o " + large.path("out"), "ulimit -f 8;");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, large.path("out") + ": The file cannot be written: File too large.\n");
    EXPECT_EQ(large.folder().names(), Names{"model.mox"});
}

TEST_F(DumpCommand, AStreamThatTakesNothingHasStatus1)
{
    for (std::string const format : {"--format text", "--format npy", "--json"}) {
        MoxTest::Outcome const outcome =
            MoxTest::runInto("/dev/full", "dump " + file.path() + " root/a 'Node Ids' " + format);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.err, "mox: the output cannot be written\n");
    }
}

TEST_F(DumpCommand, WrongUsageHasStatus2)
{
    std::string const dump = "dump " + file.path() + " root/a 'Node Ids' ";
    for (std::string const& arguments :
         {"dump " + file.path() + " root/a", dump + "--format png", dump + "--json --format csv",
          dump + "--overwrite", dump + "more"}) {
        MoxTest::Outcome const outcome = MoxTest::run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    }
}

TEST_F(DumpCommand, NpyIsNotForATerminal)
{
    if (!Support::Terminal::canBeHad())
        GTEST_SKIP() << Support::noTerminalHere;
    Support::Terminal const terminal;
    MoxTest::Outcome const outcome = MoxTest::runInto(
        terminal.name(), "dump " + file.path() + " root/a 'Node Ids' --format npy");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "mox: npy is not for a terminal: name a file with -o; see mox --help\n");
}

} // namespace
