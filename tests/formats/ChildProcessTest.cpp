#include "support/Folder.h"

#include <common/EndingSignals.h>
#include <common/PartialFile.h>
#include <mox/formats/ChildProcess.h>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <stdexcept>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Mox::runInChild;

constexpr int halfAMinute = 30000;

TEST(ChildProcess, GivesTheStatusOfItsAction)
{
    EXPECT_EQ(runInChild([] { return 7; }).status, 7);
    EXPECT_EQ(runInChild([]() -> int { throw std::runtime_error("no"); }).status, 1);
}

TEST(ChildProcess, HasNoStatusWhenASignalEndedIt)
{
    Mox::ChildResult const child = runInChild([] { return ::raise(SIGKILL); });
    EXPECT_EQ(child.status, std::nullopt);
    EXPECT_EQ(child.signal, SIGKILL);
}

/// A process with a child that would never end; both hold the end of the pipe that is written to.
pid_t startWithEndlessChild(std::array<int, 2> const& pipe)
{
    pid_t const id = ::fork();
    if (id != 0)
        return id;
    ::close(pipe[0]);
    runInChild([&pipe] {
        bool const isTold = ::write(pipe[1], "x", 1) == 1;
        while (isTold)
            ::pause();
        return 1;
    });
    ::_exit(1);
}

TEST(ChildProcess, EndsWithItsParent)
{
    std::array<int, 2> pipe = {};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    pid_t const parent = startWithEndlessChild(pipe);
    ASSERT_GT(parent, 0);
    ::close(pipe[1]);
    char byte = 0;
    ASSERT_EQ(::read(pipe[0], &byte, 1), 1);
    ::kill(parent, SIGKILL);
    ::waitpid(parent, nullptr, 0);
    pollfd end{pipe[0], POLLIN, 0};
    ASSERT_EQ(::poll(&end, 1, halfAMinute), 1) << "the child goes on";
    EXPECT_EQ(::read(pipe[0], &byte, 1), 0);
    ::close(pipe[0]);
}

/// A process whose child has a temporary file when it writes to the pipe, and goes on without end.
pid_t startWithChildThatWrites(std::array<int, 2> const& pipe, std::filesystem::path const& target)
{
    pid_t const id = ::fork();
    if (id != 0)
        return id;
    Common::cleanUpBeforeEnding();
    runInChild([&] {
        Common::PartialFile const file(target, false);
        bool const isTold = ::write(pipe[1], "x", 1) == 1;
        while (isTold)
            ::pause();
        return 1;
    });
    ::_exit(1);
}

TEST(ChildProcess, LeavesNothingWhenItsParentIsAskedToEnd)
{
    Support::Folder const folder;
    std::array<int, 2> pipe = {};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    pid_t const parent = startWithChildThatWrites(pipe, folder.path("out"));
    ASSERT_GT(parent, 0);
    char byte = 0;
    ASSERT_EQ(::read(pipe[0], &byte, 1), 1);
    EXPECT_EQ(folder.names().size(), 1U);
    ::kill(parent, SIGTERM);
    int status = 0;
    ::waitpid(parent, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
    EXPECT_EQ(folder.names(), std::vector<std::string>());
    ::close(pipe[0]);
    ::close(pipe[1]);
}

} // namespace
