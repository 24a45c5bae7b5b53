// Runs the command as people do: what it prints, what it returns and what it leaves behind.

#include "Exported.h"
#include "mox/Command.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>

namespace {

using namespace ExportTest;
using MoxTest::Outcome;

using Names = std::vector<std::string>;

ModelFile triangle()
{
    return ModelFile([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{1, 2, 3},
                               addTriangle(model, "part"), Step("One"));
    });
}

/// Several files of some kilobytes each.
ModelFile large()
{
    return ModelFile([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "part");
        Floats nodes(30000);
        for (std::size_t i = 0; i < nodes.size(); ++i)
            nodes[i] = static_cast<float>(i * i % 7919);
        model.addArrayProperty(DatasetType::Coordinates, rows(3, nodes), shape, Step());
        model.addArrayProperty(DatasetType::Displacement, rows(3, nodes), shape, Step("One"));
        model.addArrayProperty(DatasetType::Displacement, rows(3, nodes), shape, Step("Two"));
    });
}

Outcome exported(ModelFile const& file, std::string const& output, std::string const& options = "",
                 std::string const& prefix = "")
{
    return MoxTest::run("export " + file.path() + " " + file.path(output) + " " + options, prefix);
}

void expectFailure(Outcome const& outcome, std::string const& message)
{
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "mox export: " + message + "\n");
}

TEST(ExportCommand, SaysWhatItWrote)
{
    ModelFile const file = triangle();
    Outcome const outcome = exported(file, "out.vtu");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    auto const size = std::filesystem::file_size(file.path("out.vtu"));
    EXPECT_EQ(outcome.out, file.path("out.vtu") +
                               ": 1 step, 1 shape, 3 nodes, 1 element, 1 field in 1 file of " +
                               std::to_string(size) + " bytes\n");
}

TEST(ExportCommand, SaysItAsJson)
{
    ModelFile const file = triangle();
    Outcome const outcome = exported(file, "out.pvd", "--json");
    EXPECT_EQ(outcome.status, 0);
    auto const json = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(json["file"], file.path("out.pvd"));
    EXPECT_EQ(json["steps"], Names{"One"});
    EXPECT_EQ(json["fields"], Names{"T"});
    EXPECT_EQ(json["shapes"], 1);
    EXPECT_EQ(json["nodes"], 3);
    EXPECT_EQ(json["elements"], 1);
    EXPECT_EQ(json["files"], 2);
    EXPECT_EQ(json["bytes"], std::filesystem::file_size(file.path("out.pvd")) +
                                 std::filesystem::file_size(file.path("out/step_1.vtu")));
    EXPECT_EQ(json["warnings"], Names{});
}

TEST(ExportCommand, WarningsAreNoFailure)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{1, 2},
                               addTriangle(model, "part"), Step("One"));
    });
    Outcome const outcome = exported(file, "out.vtu");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err,
              "mox export: warning: The dataset \"T\" of the shape \"part\" has 2 rows "
              "for 3 nodes and is left out.\n");
}

TEST(ExportCommand, AnEndingThatNamesNoFormatIsBadUsage)
{
    ModelFile const file = triangle();
    for (std::string const name : {"out.vtk", "out", "out.VTU"}) {
        Outcome const outcome = exported(file, name);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.err, "mox: OUT: " + file.path(name) +
                                   " does not end with .vtu, .vtm or .pvd; see mox --help\n");
    }
    EXPECT_EQ(file.folder().names(), Names{"model.mox"});
}

TEST(ExportCommand, ADamagedBlockOfValuesIsTold)
{
    ModelFile const file = large();
    std::string content = Support::contentOf(file.path());
    content[content.size() / 2] = static_cast<char>(content[content.size() / 2] ^ 1);
    auto const damaged = file.folder().write("damaged.mox", content);
    for (std::string const output : {"out.vtu", "out.vtm", "out.pvd"}) {
        Outcome const outcome =
            MoxTest::run("export " + damaged.string() + " " + file.path(output));
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.err.rfind("mox export: " + damaged.string() + ": ", 0), 0U)
            << outcome.err;
    }
    EXPECT_EQ(file.folder().names(), (Names{"damaged.mox", "model.mox"}));
}

TEST(ExportCommand, AnExistingFileIsReplacedOnlyWhenTold)
{
    ModelFile const file = triangle();
    for (std::string const output : {"out.vtu", "set.vtm", "all.pvd"}) {
        file.folder().write(output, "old");
        expectFailure(exported(file, output), file.path(output) + ": File exists.");
        EXPECT_EQ(Support::contentOf(file.path(output)), "old");
        EXPECT_EQ(exported(file, output, "--overwrite").status, 0);
        EXPECT_NE(Support::contentOf(file.path(output)), "old");
        EXPECT_EQ(exported(file, output, "--overwrite").status, 0);
    }
    EXPECT_EQ(file.folder().names(),
              (Names{"all", "all.pvd", "model.mox", "out.vtu", "set", "set.vtm"}));
}

TEST(ExportCommand, AFullDiskIsToldAndLeavesNothing)
{
    ModelFile const file = large();
    for (std::string const output : {"out.vtu", "out.vtm", "out.pvd"}) {
        for (std::string const blocks : {"1", "40", "100"}) {
            SCOPED_TRACE(output + " " + blocks);
            Outcome const outcome =
                exported(file, output, "", "trap '' XFSZ; ulimit -f " + blocks + ";");
            EXPECT_EQ(outcome.status, 1);
            EXPECT_EQ(outcome.out, "");
            EXPECT_EQ(outcome.err.rfind(
                          "mox export: " + file.path(output) + ": The file cannot be written: ", 0),
                      0U)
                << outcome.err;
            EXPECT_EQ(file.folder().names(), Names{"model.mox"});
        }
    }
}

TEST(ExportCommand, ADiskThatFillsUpLeavesTheOldFiles)
{
    ModelFile const file = large();
    ASSERT_EQ(exported(file, "out.pvd", "--step One").status, 0);
    std::string const old = Support::contentOf(file.path("out.pvd"));
    EXPECT_EQ(exported(file, "out.pvd", "--overwrite", "trap '' XFSZ; ulimit -f 40;").status, 1);
    EXPECT_EQ(Support::contentOf(file.path("out.pvd")), old);
    EXPECT_EQ(ReadBack::grid(file.path("out/step_1.vtu"))->GetNumberOfPoints(), 10000);
    EXPECT_EQ(file.folder().names(), (Names{"model.mox", "out", "out.pvd"}));
}

} // namespace
