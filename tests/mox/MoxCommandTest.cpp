#include "mox/Command.h"
#include "moxread/Sample.h"
#include "moxread/TestFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

using namespace MoxReadTest;
using MoxTest::Outcome;
using MoxTest::run;
using MoxTest::runInto;
using MoxTest::runIntoClosedPipe;

namespace {

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
            "dump " + file + " root/part Ids",
            "dump --json " + file + " root/part Ids",
            "diff " + file + " " + file,
            "diff --json " + file + " " + file};
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
        {"verify --fast a", "The following argument was not expected: --fast"},
        {"dump a b", "DATASET is required"},
        {"diff a", "B is required"}};
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
    for (std::string const command : {"ls", "info", "verify", "dump", "diff"}) {
        Outcome const outcome = run(command + " --help");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        EXPECT_NE(outcome.out.find("\nExample:\n  mox " + command + " "), std::string::npos);
    }
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
        EXPECT_EQ(outcome.status, 0) << call;
        EXPECT_EQ(outcome.err, "") << call;
    }
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
