#include "mox/Command.h"
#include "mox/ModelFile.h"
#include "moxread/Sample.h"
#include "moxread/TestFile.h"
#include "support/Folder.h"

#include <Zyl2/Version.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

using namespace MoxReadTest;
using namespace Zyl2::Mox2;
using MoxTest::ModelFile;
using MoxTest::Outcome;
using MoxTest::run;
using MoxTest::runInto;
using MoxTest::runIntoClosedPipe;
using Support::Folder;

namespace {

using Names = std::vector<std::string>;

/// Every command that reads a model file, as it is called for one.
std::vector<std::string> callsFor(std::string const& path)
{
    std::string const file = "'" + path + "'";
    return {"ls " + file,
            "ls --json " + file,
            "ls " + file + " root/part",
            "info " + file,
            "info --json " + file,
            "verify " + file,
            "verify --json " + file,
            "check " + file,
            "check --json " + file,
            "dump " + file + " root/part Ids",
            "dump --json " + file + " root/part Ids",
            "diff " + file + " " + file,
            "diff --json " + file + " " + file};
}

/// Every command that makes a file of another, as far as it can here.
std::vector<std::string> callsThatMake(Folder const& folder, std::string const& path)
{
    auto const call = [&](std::string const& command, std::string const& output) {
        return command + " '" + path + "' '" + folder.path(output).string() + "'";
    };
    std::vector<std::string> calls = {call("translate --json", "out.mox")};
#ifdef HAS_VTK
    calls.push_back(call("export --json", "out.pvd"));
    calls.push_back(call("view --json", "out.png"));
#endif
    return calls;
}

bool isOneLine(std::string const& text)
{
    return std::count(text.begin(), text.end(), '\n') == 1 && text.back() == '\n';
}

} // namespace

TEST(MoxCommand, WrongUsageGetsOneLineThatNamesItAndStatus2)
{
    std::vector<std::pair<std::string, std::string>> const calls = {
        {"", "A command is required"},
        {"paint", "The following argument was not expected: paint"},
        {"ls", "FILE is required"},
        {"ls a b c", "The following argument was not expected: c"},
        {"info", "FILE is required"},
        {"info a b", "The following argument was not expected: b"},
        {"verify", "FILE is required"},
        {"check a b", "The following argument was not expected: b"},
        {"verify --threads few a", "--threads: few is no number of threads from 0 to 1024"},
        {"dump --threads=-1 a b c", "--threads: -1 is no number of threads from 0 to 1024"},
        {"diff --threads 1025 a b", "--threads: 1025 is no number of threads from 0 to 1024"},
        {"export --threads 1.5 a b.vtu", "--threads: 1.5 is no number of threads from 0 to 1024"},
        {"verify --fast a", "The following argument was not expected: --fast"},
        {"dump a b", "DATASET is required"},
        {"diff a", "B is required"},
        {"export a", "OUT is required"},
        {"view a", "OUT is required"},
        {"translate a", "OUT is required"}};
    for (auto const& [arguments, complaint] : calls) {
        Outcome const outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "mox: " + complaint + "; see mox --help\n");
    }
}

TEST(MoxCommand, HelpHasAnExampleAndStatus0)
{
    EXPECT_EQ(run("--help").status, 0);
    for (std::string const command :
         {"translate", "verify", "check", "ls", "info", "dump", "diff", "export", "view"}) {
        Outcome const outcome = run(command + " --help");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        EXPECT_NE(outcome.out.find("\nExample:\n  mox " + command + " "), std::string::npos);
    }
}

TEST(MoxCommand, TheVersionIsOneLine)
{
    Outcome const outcome = run("--version");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "mox " ZYL2_VERSION_STRING "\n");
    EXPECT_EQ(outcome.err, "");
}

TEST(MoxCommand, ABadFileGetsOneSentenceAndStatus1)
{
    std::string const sound = Sample().file();
    for (std::string const& content :
         {std::string("something else"), std::string(), sound.substr(0, 7), sound.substr(0, 2000),
          sound.substr(0, 2900), sound.substr(0, sound.size() - 1), sound + "x"}) {
        const TemporaryFile file(content);
        for (std::string const& call : callsFor(file.path())) {
            Outcome const outcome = run(call);
            EXPECT_EQ(outcome.status, 1) << call;
            EXPECT_TRUE(isOneLine(outcome.err)) << call << ": " << outcome.err;
            EXPECT_EQ(outcome.err.find(file.path() + ": "), 0U) << outcome.err;
            bool const isVerdict = call.find("verify --json") == 0;
            EXPECT_EQ(outcome.out.empty(), !isVerdict) << call;
        }
    }
}

TEST(MoxCommand, WhatIsNoFileGetsOneSentenceAndStatus1)
{
    for (std::string const path : {"/absent/model.mox", "/", "/dev/null"}) {
        for (std::string const& call : callsFor(path)) {
            Outcome const outcome = run(call);
            EXPECT_EQ(outcome.status, 1) << call;
            EXPECT_TRUE(isOneLine(outcome.err)) << call << ": " << outcome.err;
        }
    }
}

TEST(MoxCommand, AGoodFileHasStatus0)
{
    const TemporaryFile file(Sample().file());
    for (std::string const& call : callsFor(file.path())) {
        Outcome const outcome = run(call);
        // Its bytes are good, but it has ids of elements that are not there.
        EXPECT_EQ(outcome.status, call.find("check ") == 0 ? 1 : 0) << call;
        EXPECT_EQ(outcome.err, "") << call;
    }
}

TEST(MoxCommand, ThreadsChangeNothingThatIsSaid)
{
    Folder const folder;
    auto const write = [&](std::string const& name, float change) {
        SaverOptions options;
        options.blockSize = 4096;
        Model model;
        model.saveTo(folder.path(name).string(), options);
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addAssemblyComponents({"/root/part"})[0];
        model.addArrayProperty(DatasetType::Coordinates, Array2d<float>(1, 3, {1, 2, 3}), shape,
                               Step());
        for (unsigned int number = 0; number < 12; ++number) {
            Array1d<float> values(1500, static_cast<float>(number) + change);
            for (unsigned int row = 1; row < 1500; ++row)
                values[row] = static_cast<float>(row * row % 977);
            model.addArrayProperty("T", DatasetType::Result10, values, shape,
                                   Step("step " + std::to_string(number)));
        }
        model.close();
        return "'" + folder.path(name).string() + "'";
    };
    std::string const a = write("a.mox", 0);
    std::string const b = write("b.mox", 0.5F);
    std::string const damaged = write("damaged.mox", 0);
    std::fstream file(folder.path("damaged.mox"), std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(20000);
    ASSERT_TRUE(file.write("damaged", 7).flush());
    for (std::string const& model : {a, damaged}) {
        std::vector<std::string> calls = {
            "verify " + model, "verify --json " + model + " " + b, "diff " + model + " " + b,
            "diff --json " + b + " " + model, "dump " + model + " root/part T --step 'step 4'"};
#ifdef HAS_VTK
        std::string const output = "'" + folder.path("out.pvd").string() + "'";
        calls.push_back("export --overwrite " + model + " " + output);
#endif
        for (std::string const& call : calls) {
            Outcome const expected = run(call);
            for (std::string const threads : {"0", "1", "2", "5"}) {
                Outcome const outcome = run(call + " --threads " + threads);
                EXPECT_EQ(outcome.status, expected.status) << call;
                EXPECT_EQ(outcome.out, expected.out) << call;
                EXPECT_EQ(outcome.err, expected.err) << call;
            }
        }
    }
    EXPECT_EQ(run("verify " + damaged).status, 1);
    EXPECT_EQ(run("verify " + a).status, 0);
    EXPECT_NE(run("diff " + a + " " + b).out.find("12 differences"), std::string::npos);
}

TEST(MoxCommand, OutputThatCannotBeWrittenHasStatus1)
{
    const TemporaryFile file(Sample().file());
    for (std::string const& call : callsFor(file.path())) {
        if (call.find("diff '") == 0)
            continue; // Says nothing of equal files.
        Outcome const outcome = runInto("/dev/full", call);
        EXPECT_EQ(outcome.status, 1) << call;
        EXPECT_EQ(outcome.err, "mox: the output cannot be written\n") << call;
    }
}

TEST(MoxCommand, AReaderThatWentAwayHasStatus1)
{
    const TemporaryFile file(Sample().file());
    for (std::string const& call : callsFor(file.path())) {
        if (call.find("diff '") == 0)
            continue;
        Outcome const outcome = runIntoClosedPipe(call);
        EXPECT_EQ(outcome.status, 1) << call;
        EXPECT_EQ(outcome.err, "mox: the output cannot be written\n") << call;
    }
}

TEST(MoxCommand, ABadFileIsMadeNothingOf)
{
    std::string const sound = Sample().file();
    for (std::string const& content :
         {std::string("something else"), std::string(), sound.substr(0, 2900),
          sound.substr(0, sound.size() - 1), sound + "x"}) {
        Folder const folder;
        std::string const path = folder.write("in.mox", content).string();
        for (std::string const& call : callsThatMake(folder, path)) {
            Outcome const outcome = run(call);
            EXPECT_EQ(outcome.status, 1) << call;
            EXPECT_TRUE(isOneLine(outcome.err)) << call << ": " << outcome.err;
            EXPECT_NE(outcome.err.find(": " + path + ": "), std::string::npos) << outcome.err;
            EXPECT_EQ(outcome.out, "") << call;
            EXPECT_EQ(folder.names(), Names{"in.mox"}) << call;
        }
    }
}

TEST(MoxCommand, WhatIsNoFileIsMadeNothingOf)
{
    Folder const folder;
    for (std::string const path : {"/absent/model.mox", "/", "/dev/null"}) {
        for (std::string const& call : callsThatMake(folder, path)) {
            Outcome const outcome = run(call);
            EXPECT_EQ(outcome.status, 1) << call;
            EXPECT_TRUE(isOneLine(outcome.err)) << call << ": " << outcome.err;
            EXPECT_EQ(folder.names(), Names{}) << call;
        }
    }
}

TEST(MoxCommand, DifferencesThatCannotBeWrittenHaveStatus1)
{
    const TemporaryFile file(Sample().file());
    const TemporaryFile other(minimalFile());
    Outcome const outcome =
        runInto("/dev/full", "diff '" + file.path() + "' '" + other.path() + "'");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "mox: the output cannot be written\n");
}

TEST(MoxCommand, ElementsOfNoKnownTypeCanBeLookedAtButNotShown)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "part");
        model.addArrayProperty(DatasetType::Coordinates,
                               Array2d<float>(3, 3, {0, 0, 0, 1, 0, 0, 0, 1, 0}), shape, Step());
        model.addArrayProperty(DatasetType::Connectivity3, Array1d<unsigned int>{0, 1, 2}, shape,
                               Step());
        model.addArrayProperty(DatasetType::Polylength3, Array1d<unsigned int>{3}, shape, Step());
    });
    std::string const path = "'" + file.path() + "'";
    for (std::string const& call :
         {"ls " + path, "info " + path, "verify " + path, "dump " + path + " root/part Polylength",
          "diff " + path + " " + path}) {
        Outcome const outcome = run(call);
        EXPECT_EQ(outcome.status, 0) << call;
        EXPECT_EQ(outcome.err, "") << call;
    }
#ifdef HAS_VTK
    for (std::string const call : {"export", "view"}) {
        Outcome const outcome =
            run(call + " " + path + " " + file.path(call == "view" ? "out.png" : "out.vtu"));
        EXPECT_EQ(outcome.status, 1) << call;
        EXPECT_EQ(outcome.err, "mox " + call + ": " + file.path() +
                                   ": Shape \"part\": There is no type of element of dimension 3 "
                                   "with 3 nodes.\n");
    }
    EXPECT_EQ(file.folder().names(), Names{"model.mox"});
#endif
}

#ifdef HAS_VTK

TEST(MoxCommand, SummariesThatCannotBeWrittenHaveStatus1)
{
    Folder const folder;
    std::string const source =
        folder
            .write("in.vtk",
                   "# vtk DataFile Version 3.0\nby hand\nASCII\nDATASET UNSTRUCTURED_GRID\n"
                   "POINTS 3 float\n0 0 0 1 0 0 0 1 0\nCELLS 1 4\n3 0 1 2\nCELL_TYPES 1\n5\n")
            .string();
    std::string const model = folder.path("model.mox").string();
    for (std::string const& call :
         {"translate --json --overwrite '" + source + "' '" + model + "'",
          "export --overwrite '" + model + "' '" + folder.path("out.vtu").string() + "'",
          "view --overwrite '" + model + "' '" + folder.path("out.png").string() + "'"}) {
        for (Outcome const& outcome : {runInto("/dev/full", call), runIntoClosedPipe(call)}) {
            EXPECT_EQ(outcome.status, 1) << call;
            EXPECT_EQ(outcome.err, "mox: the output cannot be written\n") << call;
        }
    }
}

#endif
