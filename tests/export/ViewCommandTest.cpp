#include "Exported.h"
#include "Pixels.h"
#include "mox/Command.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using namespace ExportTest;
using MoxTest::Outcome;

using Names = std::vector<std::string>;

constexpr char const* withoutDisplay = "unset DISPLAY;";

ModelFile triangleWithResult()
{
    return ModelFile([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{1, 2, 3},
                               addTriangle(model, "part"), Step("One"));
    });
}

Outcome viewed(ModelFile const& file, std::string const& output, std::string const& options = "",
               std::string const& prefix = "")
{
    return MoxTest::run("view " + file.path() + " " + file.path(output) + " " + options,
                        withoutDisplay + prefix);
}

TEST(ViewCommand, SaysWhatThePictureShows)
{
    ModelFile const file = triangleWithResult();
    Outcome const outcome = viewed(file, "out.png", "--size 320x240");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out,
              file.path("out.png") + ": One, T from 1 to 3, deformed 0 times, 320x240 pixels\n");
    EXPECT_EQ(Pixels(file.path("out.png")).width(), 320);
}

TEST(ViewCommand, SaysItAsJson)
{
    ModelFile const file = triangleWithResult();
    Outcome const outcome = viewed(file, "out.png", "--size 320x240 --camera z --edges --json");
    EXPECT_EQ(outcome.status, 0);
    auto const json = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(json["file"], file.path("out.png"));
    EXPECT_EQ(json["width"], 320);
    EXPECT_EQ(json["height"], 240);
    EXPECT_EQ(json["step"], "One");
    EXPECT_EQ(json["field"], "T");
    EXPECT_EQ(json["least"], 1);
    EXPECT_EQ(json["greatest"], 3);
    EXPECT_EQ(json["warp"], 0);
}

TEST(ViewCommand, WrongUsageIsTold)
{
    ModelFile const file = triangleWithResult();
    EXPECT_EQ(viewed(file, "out.jpg").status, 2);
    EXPECT_EQ(viewed(file, "out.jpg").err,
              "mox: OUT: " + file.path("out.jpg") + " does not end with .png; see mox --help\n");
    for (std::string const size : {"big", "100", "0x0", "-640x480", "640x480x2", "99999x99999"})
        EXPECT_EQ(viewed(file, "out.png", "--size=" + size).status, 2) << size;
    EXPECT_EQ(viewed(file, "out.png", "--camera north").status, 2);
    EXPECT_EQ(viewed(file, "out.png", "--component pressure").status, 2);
    EXPECT_EQ(viewed(file, "out.png", "--warp much").status, 2);
    EXPECT_EQ(file.folder().names(), Names{"model.mox"});
}

TEST(ViewCommand, BadInputIsTold)
{
    ModelFile const file = triangleWithResult();
    EXPECT_EQ(viewed(file, "out.png", "--step Two").err,
              "mox view: " + file.path() + ": There is no step \"Two\".\n");
    EXPECT_EQ(viewed(file, "out.png", "--field P").err,
              "mox view: " + file.path() + ": There is no field \"P\" in this step.\n");
    std::string const content = Support::contentOf(file.path());
    auto const cut = file.folder().write("cut.mox", content.substr(0, content.size() / 2));
    Outcome const outcome = MoxTest::run("view " + cut.string() + " " + file.path("out.png"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err.rfind("mox view: " + cut.string() + ": ", 0), 0U);
    auto const foreign = file.folder().write("foreign.mox", "something else");
    EXPECT_EQ(MoxTest::run("view " + foreign.string() + " " + file.path("out.png")).status, 1);
    EXPECT_EQ(file.folder().names(), (Names{"cut.mox", "foreign.mox", "model.mox"}));
}

TEST(ViewCommand, AnExistingPictureIsReplacedOnlyWhenTold)
{
    ModelFile const file = triangleWithResult();
    file.folder().write("out.png", "old");
    Outcome const outcome = viewed(file, "out.png");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "mox view: " + file.path("out.png") + ": File exists.\n");
    EXPECT_EQ(Support::contentOf(file.path("out.png")), "old");
    EXPECT_EQ(viewed(file, "out.png", "--overwrite").status, 0);
    EXPECT_EQ(Pixels(file.path("out.png")).width(), 1280);
}

TEST(ViewCommand, AFullDiskIsToldAndLeavesNothing)
{
    ModelFile const file = triangleWithResult();
    Outcome const outcome = viewed(file, "out.png", "", "trap '' XFSZ; ulimit -f 4;");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "mox view: " + file.path("out.png") +
                               ": The file cannot be written: File too large.\n");
    EXPECT_EQ(file.folder().names(), Names{"model.mox"});
}

} // namespace
