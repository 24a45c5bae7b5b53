#include "moxread/Sample.h"
#include "moxread/TestFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sys/wait.h>

using namespace MoxReadTest;

namespace {

int statusOf(std::string const& arguments)
{
    const std::string command = std::string(MOX_COMMAND) + " " + arguments + " >/dev/null 2>&1";
    int const status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// What the command says on the error stream.
std::string errorOf(std::string const& arguments)
{
    const TemporaryFile text("");
    const std::string command =
        std::string(MOX_COMMAND) + " " + arguments + " >/dev/null 2>" + text.path();
    EXPECT_NE(std::system(command.c_str()), -1);
    std::ifstream stream(text.path());
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

TEST(MoxCommand, WrongUsageGetsOneLineThatNamesIt)
{
    EXPECT_EQ(errorOf(""), "mox: A command is required; see mox --help\n");
    EXPECT_EQ(errorOf("paint"),
              "mox: The following argument was not expected: paint; see mox --help\n");
    EXPECT_EQ(errorOf("ls"), "mox: FILE is required; see mox --help\n");
    EXPECT_EQ(errorOf("verify --fast a"),
              "mox: The following argument was not expected: --fast; see mox --help\n");
}

TEST(MoxCommand, WrongUsageHasStatus2)
{
    EXPECT_EQ(statusOf(""), 2);
    EXPECT_EQ(statusOf("paint"), 2);
    EXPECT_EQ(statusOf("verify"), 2);
    EXPECT_EQ(statusOf("ls"), 2);
    EXPECT_EQ(statusOf("ls a b c"), 2);
    EXPECT_EQ(statusOf("verify --fast a"), 2);
}

TEST(MoxCommand, HelpHasStatus0)
{
    EXPECT_EQ(statusOf("--help"), 0);
    EXPECT_EQ(statusOf("verify --help"), 0);
}

TEST(MoxCommand, ABadFileHasStatus1)
{
    const TemporaryFile file("something else");
    EXPECT_EQ(statusOf("verify " + file.path()), 1);
    EXPECT_EQ(statusOf("ls " + file.path()), 1);
    EXPECT_EQ(statusOf("ls " + file.path() + ".absent"), 1);
}

TEST(MoxCommand, AGoodFileHasStatus0)
{
    const TemporaryFile file(Sample().file());
    EXPECT_EQ(statusOf("verify " + file.path()), 0);
    EXPECT_EQ(statusOf("ls " + file.path()), 0);
}

TEST(MoxCommand, OutputThatCannotBeWrittenHasStatus1)
{
    const TemporaryFile file(Sample().file());
    const std::string command =
        std::string(MOX_COMMAND) + " ls " + file.path() + " >/dev/full 2>&1";
    int const status = std::system(command.c_str());
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1);
}
