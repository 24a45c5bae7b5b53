#include "support/Folder.h"

#include <common/EndingSignals.h>
#include <common/PartialFile.h>
#include <common/SignalsHeld.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <fstream>
#include <functional>
#include <iostream>
#include <thread>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Common::cleanUpBeforeEnding;
using Common::PartialFile;
using Support::Folder;
using Names = std::vector<std::string>;

constexpr int survived = 7;

/// How a process ended that did this, as `waitpid` tells it.
int endOf(std::function<void()> const& action)
{
    pid_t const id = ::fork();
    if (id == 0) {
        rlimit const none{0, 0};
        ::setrlimit(RLIMIT_CORE, &none);
        for (int const signal : {SIGABRT, SIGSEGV})
            std::signal(signal, SIG_DFL);
        try {
            action();
        } catch (std::exception const& error) {
            std::cerr << error.what() << '\n';
        }
        ::_exit(survived);
    }
    int status = 0;
    ::waitpid(id, &status, 0);
    return status;
}

int signalThatEnded(std::function<void()> const& action)
{
    int const status = endOf(action);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

bool makeFilledFolder(std::filesystem::path const& path)
{
    std::filesystem::create_directories(path / "a" / "b");
    constexpr int manyForOneList = 300;
    for (int i = 0; i < manyForOneList; ++i)
        std::ofstream(path / "a" / "b" / ("file of a long name " + std::to_string(i))) << i;
    return std::filesystem::create_directory(path / "c");
}

class EndedBy : public testing::TestWithParam<int>
{};

TEST_P(EndedBy, LeavesNoTemporaryFileAndNoFolder)
{
    Folder const folder;
    folder.write("other", "stays");
    EXPECT_EQ(signalThatEnded([&] {
                  cleanUpBeforeEnding();
                  PartialFile const first(folder.path("out"), false);
                  Common::TemporaryPath const second(folder.path("folder"), makeFilledFolder);
                  PartialFile const third(folder.path("out"), false);
                  std::raise(GetParam());
              }),
              GetParam());
    EXPECT_EQ(folder.names(), Names{"other"});
}

INSTANTIATE_TEST_SUITE_P(Signals, EndedBy,
                         testing::Values(SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGABRT, SIGSEGV),
                         [](auto const& given) { return sigabbrev_np(given.param); });

TEST(EndingSignals, AnotherThreadThatGetsOneLeavesTheRestToTheFirst)
{
    Folder const folder;
    EXPECT_EQ(signalThatEnded([&] {
                  cleanUpBeforeEnding();
                  PartialFile const file(folder.path("out"), false);
                  std::thread([] { std::raise(SIGTERM); }).join();
              }),
              SIGTERM);
    EXPECT_EQ(folder.names(), Names());
}

TEST(EndingSignals, WhatIsPublishedStays)
{
    Folder const folder;
    EXPECT_EQ(signalThatEnded([&] {
                  cleanUpBeforeEnding();
                  PartialFile file(folder.path("out"), false);
                  file.publish();
                  std::raise(SIGTERM);
              }),
              SIGTERM);
    EXPECT_EQ(folder.names(), Names{"out"});
}

TEST(EndingSignals, WaitWhileTheyAreHeld)
{
    Folder const folder;
    EXPECT_EQ(signalThatEnded([&] {
                  cleanUpBeforeEnding();
                  Common::SignalsHeld const held;
                  std::raise(SIGINT);
                  folder.write("done", "");
              }),
              SIGINT);
    EXPECT_EQ(folder.names(), Names{"done"});
}

TEST(EndingSignals, ThoseThatAreIgnoredStayIgnored)
{
    int const status = endOf([] {
        std::signal(SIGHUP, SIG_IGN);
        cleanUpBeforeEnding();
        std::raise(SIGHUP);
    });
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), survived);
}

} // namespace
