#include "VerifyCommand.h"

#include "moxread/Sample.h"
#include "moxread/TestFile.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace MoxReadTest;

TEST(VerifyCommand, ASoundFileGetsOneLineOfCounts)
{
    const std::string content = Sample().file();
    const TemporaryFile file(content);
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(verifyFile(file.path(), out, err), 0);
    EXPECT_EQ(out.str(), file.path() + ": ok (6 blocks, 4 nodes, 3 datasets, " +
                             std::to_string(content.size()) + " bytes)\n");
    EXPECT_EQ(err.str(), "");
}

TEST(VerifyCommand, ABadFileGetsOneLineOnTheErrorStream)
{
    const TemporaryFile file("something else");
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(verifyFile(file.path(), out, err), 1);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), file.path() + ": not a mox file: it does not begin with the signature\n");
}
