#include "Sample.h"
#include "TestFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/wait.h>

using namespace MoxReadTest;

namespace {

int statusOf(const std::string& arguments)
{
    const std::string command = std::string(MOX_COMMAND) + " " + arguments + " >/dev/null 2>&1";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(MoxCommand, WrongUsageHasStatus2)
{
    EXPECT_EQ(statusOf(""), 2);
    EXPECT_EQ(statusOf("paint"), 2);
    EXPECT_EQ(statusOf("verify"), 2);
    EXPECT_EQ(statusOf("ls"), 2);
    EXPECT_EQ(statusOf("verify a b"), 2);
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
    const int status = std::system(command.c_str());
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1);
}
