// What people see who wait for a command. The clock of the commands is made to run so fast that all
// that they do takes long.

#include "mox/Command.h"
#include "mox/ModelFile.h"
#include "support/Terminal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace Zyl2::Mox2;
using MoxTest::ModelFile;
using MoxTest::Outcome;

// The clock is loaded before the runtime of AddressSanitizer, which would mind.
constexpr char const* fastClock =
    "ASAN_OPTIONS=$ASAN_OPTIONS:verify_asan_link_order=0 LD_PRELOAD=" FAST_CLOCK;

/// A triangle, and more nodes than are written out at once.
ModelFile triangle()
{
    constexpr unsigned long nodes = 50000;
    return ModelFile([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "part");
        Array2d<float> coordinates(nodes, 3, 1.0F);
        coordinates(0, 0) = 0;
        coordinates(1, 1) = 0;
        model.addArrayProperty(DatasetType::Coordinates, coordinates, shape, Step());
        model.addArrayProperty(DatasetType::Connectivity2, Array1d<unsigned int>{0, 1, 2}, shape,
                               Step());
        model.addArrayProperty(DatasetType::Polylength2, Array1d<unsigned int>{3}, shape, Step());
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>(nodes, 5.0F), shape,
                               Step("One"));
    });
}

/// Commands whose work grows with the file, and how each is called.
std::vector<std::pair<std::string, std::string>> callsFor(ModelFile const& file)
{
    std::string const model = " " + file.path() + " ";
    std::vector<std::pair<std::string, std::string>> calls = {
        {"ls", model},
        {"verify", model},
        {"dump", model + "root/part Coordinates -o " + file.path("out.txt")},
        {"diff", model + model}};
#ifdef HAS_VTK
    auto const source = file.folder().write(
        "in.vtk", "# vtk DataFile Version 3.0\nby hand\nASCII\nDATASET UNSTRUCTURED_GRID\n"
                  "POINTS 3 float\n0 0 0 1 0 0 0 1 0\nCELLS 1 4\n3 0 1 2\nCELL_TYPES 1\n5\n");
    calls.emplace_back("export", model + file.path("out.vtu"));
    calls.emplace_back("view", model + file.path("out.png") + " --size 200x200");
    calls.emplace_back("translate", " " + source.string() + " " + file.path("out.mox"));
#endif
    return calls;
}

class ProgressBarOnTerminal : public Support::TerminalTest
{};

TEST_F(ProgressBarOnTerminal, IsShownAndGoneInTheEnd)
{
    ModelFile const file = triangle();
    for (auto const& [command, arguments] : callsFor(file)) {
        Outcome const outcome = MoxTest::runOnTerminal(command + arguments, fastClock);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        std::string const beginning = "\r\x1B[K" + command + " /";
        EXPECT_EQ(outcome.err.substr(0, beginning.size()), beginning) << command;
        EXPECT_NE(outcome.err.find(" %"), std::string::npos) << command;
        std::string const end = "\r\x1B[K";
        EXPECT_EQ(outcome.err.substr(outcome.err.size() - std::min(outcome.err.size(), end.size())),
                  end)
            << command;
    }
}

TEST(ProgressBar, IsNotShownWhereThereIsNoTerminal)
{
    ModelFile const file = triangle();
    for (auto const& [command, arguments] : callsFor(file)) {
        Outcome const outcome = MoxTest::run(command + arguments, fastClock);
        EXPECT_EQ(outcome.status, 0) << command;
        EXPECT_EQ(outcome.err, "") << command;
    }
}

TEST_F(ProgressBarOnTerminal, IsNotShownOfShortWork)
{
    ModelFile const file = triangle();
    EXPECT_EQ(MoxTest::runOnTerminal("verify " + file.path()).err, "");
}

#ifdef HAS_VTK

TEST_F(ProgressBarOnTerminal, IsGoneBeforeAFailureIsTold)
{
    ModelFile const file = triangle();
    Outcome const outcome = MoxTest::runOnTerminal(
        "view " + file.path() + " " + file.path("out.png") + " --field P", fastClock);
    EXPECT_EQ(outcome.status, 1);
    std::string const complaint =
        "\r\x1B[Kmox view: " + file.path() + ": There is no field \"P\" in this step.\r\n";
    ASSERT_GE(outcome.err.size(), complaint.size());
    EXPECT_EQ(outcome.err.substr(outcome.err.size() - complaint.size()), complaint);
}

#endif

} // namespace
