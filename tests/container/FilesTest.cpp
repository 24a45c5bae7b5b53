#include "Zyl2/Util/Files.h"
#include "TemporaryFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using namespace Zyl2Util;

TEST(Files, WhatStandsAtThePathExists)
{
    Support::TemporaryFolder folder;
    Support::WriteFile(folder.File("here"), "");
    EXPECT_TRUE(FileExists(folder.File("here").c_str()));
    EXPECT_TRUE(FileExists(folder.File("").c_str()));
    EXPECT_FALSE(FileExists(folder.File("elsewhere").c_str()));
    EXPECT_FALSE(FileExists(""));
}

TEST(Files, AFileHasANameUntilTheLastOneIsRemoved)
{
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("first"), "wb");
    EXPECT_TRUE(HasName(stream.get()));
    std::filesystem::create_hard_link(folder.File("first"), folder.File("second"));
    std::filesystem::remove(folder.File("first"));
    EXPECT_TRUE(HasName(stream.get()));
    std::filesystem::remove(folder.File("second"));
    EXPECT_FALSE(HasName(stream.get()));
}

} // namespace
