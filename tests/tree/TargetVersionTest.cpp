#include "Zyl2/Mox/TargetVersion.h"

#include <gtest/gtest.h>

namespace {

TEST(TargetVersion, IsNotTheVersionInTheFilesHeader)
{
    EXPECT_EQ(Zyl2Mox::TargetVersion(), "0.6");
}

TEST(TargetVersion, TheOlderLayoutIsNotWritten)
{
    EXPECT_FALSE(Zyl2Mox::IsOlderLayout());
}

} // namespace
