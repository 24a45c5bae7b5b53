#include "Zyl2/Util/Files.h"
#include "TemporaryFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using namespace Zyl2Util;

TEST(Files, NarrowingTakesTheLowEightBitsOfEachCharacter)
{
    EXPECT_EQ(Narrowed(L"abc"), "abc");
    EXPECT_EQ(Narrowed(std::wstring{wchar_t(0x141), wchar_t(0xE9), wchar_t(0x1F642)}), "A\xE9\x42");
    EXPECT_EQ(Narrowed(std::wstring{wchar_t(0x100)}), std::string(1, '\0'));
    EXPECT_EQ(Narrowed(L""), "");
}

TEST(Files, WhatStandsAtThePathExists)
{
    Support::TemporaryFolder folder;
    Support::WriteFile(folder.File("here"), "");
    EXPECT_TRUE(FileExists(folder.File("here").c_str()));
    EXPECT_TRUE(FileExists(folder.File("").c_str()));
    EXPECT_FALSE(FileExists(folder.File("elsewhere").c_str()));
    EXPECT_FALSE(FileExists(""));
}

TEST(Files, AWideNameExistsWhenItsNarrowedFormDoes)
{
    Support::TemporaryFolder folder;
    Support::WriteFile(folder.File("A"), "");
    std::string const base = folder.File("");
    std::wstring const wideBase(base.begin(), base.end());
    EXPECT_TRUE(FileExists((wideBase + L"A").c_str()));
    EXPECT_TRUE(FileExists((wideBase + wchar_t(0x141)).c_str()));
    EXPECT_FALSE(FileExists((wideBase + L"B").c_str()));
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
