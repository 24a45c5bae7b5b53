#include "mox/commands/LsCommand.h"

#include "mox/ModelFile.h"
#include "mox/Outcome.h"
#include "moxread/Bytes.h"
#include "moxread/Sample.h"
#include "moxread/TestFile.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <sstream>

using namespace MoxReadTest;
using namespace Zyl2::Mox2;

namespace {

using Mox::listFile;
using Mox::LsArguments;

Outcome listedFile(std::string const& path, std::optional<std::string> const& node, bool json)
{
    std::ostringstream out;
    std::ostringstream err;
    LsArguments options;
    options.file = path;
    options.node = node;
    options.json = json;
    int const status = listFile(options, out, err);
    return {status, out.str(), err.str()};
}

/// An error is given without the file's name in front.
Outcome listed(std::string const& content, std::optional<std::string> const& node, bool json)
{
    const TemporaryFile file(content);
    Outcome outcome = listedFile(file.path(), node, json);
    std::string const prefix = file.path() + ": ";
    if (outcome.err.compare(0, prefix.size(), prefix) == 0)
        outcome.err.erase(0, prefix.size());
    return outcome;
}

} // namespace

TEST(LsCommand, ShowsAllThatIsInAFile)
{
    const std::string content = Sample().file();
    const TemporaryFile file(content);
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(listFile(file.path(), out, err), 0);
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(
        out.str(),
        "mox 1.3: 6 blocks, 4 nodes, 3 datasets, " + std::to_string(content.size()) +
            " bytes\n"
            R"(written "Thu Nov 20 15:30:00 2025 UTC" on host "host" by user "me", format "1.3", texts "one" "two" ""
1 Group "root"
  translation 1 2 3
  rotation 0 1 0 0.5
  scale 2 2 2
  flag 1
  attribute "a" = 7
  attribute "b" = 1.5 (float)
  attribute "c" = "text"
  attribute "d" = 2.5 (double)
  2 Shape "part"
    material: diffuse 0.8 0.8 0.8 1, specular 0 0 0 1, emissive 0 0 0 1, ambient 0.16 0.16 0.16 0.2, transparency 0, shininess 0.2, flag 1
    3 Geometry "part"
      dataset "Coordinates": type 1, float, width 3, 2 rows, range -1..3 and 1 NaN, vibration
        attribute "t" = 0.5 (float)
      dataset "Ids": type 12, uint32, width 1, 2 rows, range 67305985..336794129
      dataset "Coordinates" step "t2": type 1, float, width 3, 2 rows, range -1..3 and 1 NaN, link to node 3 "Coordinates"
  4 Group "rest"
step "t2": 1 dataset
heavy data: 32 bytes, 0 of them in no dataset
)");
}

TEST(LsCommand, NamesCannotControlTheTerminal)
{
    Sample sample;
    sample.nodes[3].name = "\x1B[2J";
    const TemporaryFile file(sample.file());
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(listFile(file.path(), out, err), 0);
    EXPECT_EQ(out.str().find('\x1B'), std::string::npos);
    EXPECT_NE(out.str().find(R"(4 Group "\x1B[2J")"), std::string::npos);
}

TEST(LsCommand, TellsHowMuchOfTheHeavyDataIsUnused)
{
    std::vector<TestBlock> blocks = Sample().blocks();
    blocks.push_back({"Heavy Data", 0, "12345678"});
    const TemporaryFile file(assemble(slotsFor(blocks)));
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(listFile(file.path(), out, err), 0);
    EXPECT_NE(out.str().find("heavy data: 40 bytes, 8 of them in no dataset\n"), std::string::npos);
}

TEST(LsCommand, ShowsResultAttributesByTheirNumber)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    std::string& global = blocks[5].block;
    global.replace(global.size() - 4, 4, Bytes().u32(1).raw(std::string(96, 'r')).str());
    const TemporaryFile file(assemble(slotsFor(blocks)));
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(listFile(file.path(), out, err), 0);
    EXPECT_NE(out.str().find("\nresult attributes: 1 of 96 bytes\n"), std::string::npos);
}

TEST(LsCommand, APathShowsItsNodeAndWhatIsBelow)
{
    Outcome const shape = listed(Sample().file(), "root/part", false);
    EXPECT_EQ(shape.status, 0);
    EXPECT_EQ(shape.out.substr(0, shape.out.find('\n') + 1), "2 Shape \"part\"\n");
    EXPECT_NE(shape.out.find("\n  3 Geometry \"part\"\n"), std::string::npos);
    EXPECT_NE(shape.out.find("\nstep \"t2\": 1 dataset\n"), std::string::npos);
    EXPECT_EQ(shape.out.find("heavy data"), std::string::npos);
    EXPECT_EQ(listed(Sample().file(), "root/rest", false).out, "4 Group \"rest\"\n");
    EXPECT_EQ(listed(Sample().file(), "#4", false).out, "4 Group \"rest\"\n");
    EXPECT_EQ(listed(Sample().file(), "root", false).out, listed(Sample().file(), {}, false).out);
}

TEST(LsCommand, ALinkWhoseTargetIsNotShownHasItsRange)
{
    MoxTest::ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        Array1d<unsigned int> const shapes =
            model.addAssemblyComponents({"/root/first", "/root/second"});
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>(3, 1.5F), shapes, Step());
    });
    Outcome const outcome = listedFile(file.path(), "root/second", false);
    EXPECT_EQ(outcome.err, "");
    EXPECT_NE(outcome.out.find("3 rows, range 1.5..1.5, link to node 3 \"T\"\n"), std::string::npos)
        << outcome.out;
}

TEST(LsCommand, APathThatLeadsNowhereGetsOneSentence)
{
    Outcome const outcome = listed(Sample().file(), "root/absent", false);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "no node has the path \"root/absent\"\n");
    EXPECT_EQ(listed(Sample().file(), "#x", false).status, 1);
}

TEST(LsCommand, APathThatSeveralNodesHaveGetsTheirIds)
{
    Sample sample;
    sample.nodes[3].name = "part";
    Outcome const outcome = listed(sample.file(), "root/part", false);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "several nodes have the path \"root/part\": #2, #4\n");
}

TEST(LsCommand, StepsAreListedOnceWithTheirTime)
{
    MoxTest::ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "shape");
        Attributes late;
        late.set("Time", 0.1);
        Attributes mode;
        mode.set("Frequency", 2.5);
        mode.set("Mode", 1);
        Array1d<float> const values(2, 1.0F);
        model.addArrayProperty("T", DatasetType::Result10, values, shape, Step("late", late));
        model.addArrayProperty("T", DatasetType::Result10, values, shape, Step("early"));
        model.addArrayProperty("U", DatasetType::Result10, values, shape, Step("late", late));
        model.addArrayProperty("U", DatasetType::Result10, values, shape, Step("mode", mode));
        model.addArrayProperty("U", DatasetType::Result10, values, shape, Step());
    });
    Outcome const outcome = listedFile(file.path(), {}, false);
    EXPECT_NE(outcome.out.find("\nstep \"late\": 2 datasets, Time 0.1 (float)\n"
                               "step \"early\": 1 dataset\n"
                               "step \"mode\": 1 dataset, Frequency 2.5 (float)\n"
                               "heavy data"),
              std::string::npos)
        << outcome.out;
    nlohmann::json const json = nlohmann::json::parse(listedFile(file.path(), {}, true).out);
    EXPECT_EQ(json.at("steps").at(0).at("attributes"),
              nlohmann::json::parse(R"([{"name": "Time", "type": "float", "value": 0.1}])"));
}

TEST(LsCommand, JsonHasAllThatIsInAFile)
{
    Outcome const outcome = listed(Sample().file(), {}, true);
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    nlohmann::json const json = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(json.at("format"), "1.3");
    EXPECT_EQ(json.at("bytes"), Sample().file().size());
    EXPECT_EQ(json.at("blockCount"), 6);
    EXPECT_EQ(json.at("nodeCount"), 4);
    EXPECT_EQ(json.at("datasetCount"), 3);
    EXPECT_EQ(json.at("writings").at(0).at("texts"), nlohmann::json({"one", "two", ""}));
    EXPECT_EQ(json.at("heavyData"), nlohmann::json({{"bytes", 32}, {"unused", 0}}));
    nlohmann::json const& nodes = json.at("nodes");
    ASSERT_EQ(nodes.size(), 4U);
    EXPECT_EQ(nodes.at(0).at("parent"), 0);
    EXPECT_EQ(nodes.at(0).at("translation"), nlohmann::json({1, 2, 3}));
    EXPECT_EQ(nodes.at(0).at("flag"), true);
    EXPECT_EQ(nodes.at(0).at("attributes").at(1),
              nlohmann::json({{"name", "b"}, {"type", "float"}, {"value", 1.5}}));
    EXPECT_EQ(nodes.at(1).at("material").at("shininess"), 0.2);
    EXPECT_EQ(nodes.at(3).at("name"), "rest");
    nlohmann::json const& datasets = nodes.at(2).at("datasets");
    EXPECT_EQ(datasets.at(0).at("range"), nlohmann::json({-1, 3}));
    EXPECT_EQ(datasets.at(0).at("notNumbers"), 1);
    EXPECT_EQ(datasets.at(0).at("link"), nullptr);
    EXPECT_EQ(datasets.at(1).at("elementType"), "uint32");
    EXPECT_EQ(datasets.at(1).at("range"), nlohmann::json({67305985, 336794129}));
    EXPECT_EQ(datasets.at(2).at("step"), "t2");
    EXPECT_EQ(datasets.at(2).at("link"),
              nlohmann::json({{"node", 3}, {"dataset", "Coordinates"}, {"step", nullptr}}));
    EXPECT_EQ(json.at("steps").at(0).at("name"), "t2");
    EXPECT_EQ(json.at("steps").at(0).at("datasetCount"), 1);
}

TEST(LsCommand, JsonOfAPathHasItsNodesOnly)
{
    nlohmann::json const json = nlohmann::json::parse(listed(Sample().file(), "#4", true).out);
    EXPECT_EQ(json.at("nodeCount"), 4);
    ASSERT_EQ(json.at("nodes").size(), 1U);
    EXPECT_EQ(json.at("nodes").at(0).at("id"), 4);
    EXPECT_TRUE(json.at("steps").empty());
}

TEST(LsCommand, JsonTakesNamesThatAreNoText)
{
    Sample sample;
    sample.nodes[3].name = "a\xFF"
                           "b";
    nlohmann::json const json = nlohmann::json::parse(listed(sample.file(), {}, true).out);
    EXPECT_EQ(json.at("nodes").at(3).at("name"), "a\xEF\xBF\xBD"
                                                 "b");
}
