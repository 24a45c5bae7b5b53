#include "Zyl2/Wvf/WvFile.h"
#include "Bytes.h"
#include "LogCapture.h"
#include "TemporaryFile.h"
#include "Zyl2/Wvf/Globals.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace Zyl2Wvf;
using Support::Hex;
using Zyl2::Exception::FileOpenException;
using Zyl2::Exception::MiscelleneousException;

std::wstring Wide(std::string const& text)
{
    return std::wstring(text.begin(), text.end());
}

Support::Thrown UnableToOpen(std::string const& path)
{
    return {2, "Unable to open file \"" + path + "\"", "Zyl2Wvf::WvFile::OpenFile",
            "Zyl2/Wvf/WvFile"};
}

Support::Thrown const InUse{2, "File stream is already in use", "Zyl2Wvf::WvFile::OpenFile",
                            "Zyl2/Wvf/WvFile"};

Support::Thrown const NarrowExists{5, "File exists.",
                                   "void Zyl2Wvf::WvFile::OpenFileForWriting(const string&, bool)",
                                   "Zyl2/Wvf/WvFile", 113};

Support::Thrown const WideExists{5, "File exists.",
                                 "void Zyl2Wvf::WvFile::OpenFileForWriting(const wstring&, bool)",
                                 "Zyl2/Wvf/WvFile", 124};

/// Shows whether a stream writes to the file behind `path`.
void ExpectWritesTo(WvFile const& file, std::string const& path)
{
    ASSERT_NE(file.GetStream(), nullptr);
    std::fputs("mark", file.GetStream());
    std::fflush(file.GetStream());
    EXPECT_EQ(Support::ReadFile(path), "mark");
}

TEST(WvFile, OpeningTwiceIsRefusedAndLeavesTheFirstStreamOpen)
{
    Support::TemporaryFolder const folder;
    WvFile file;
    file.OpenFileForWriting(folder.File("first"), false);
    Support::expectThrown<MiscelleneousException>(
        [&] { file.OpenFileForWriting(folder.File("second"), false); }, InUse);
    Support::expectThrown<MiscelleneousException>(
        [&] { file.OpenFileForWriting(Wide(folder.File("second")), true); }, InUse);
    Support::expectThrown<MiscelleneousException>(
        [&] { file.OpenFile(folder.File("second"), "wb"); }, InUse);
    Support::expectThrown<MiscelleneousException>(
        [&] { file.OpenFile(Wide(folder.File("second")), L"wb"); }, InUse);
    EXPECT_FALSE(std::filesystem::exists(folder.File("second")));
    ExpectWritesTo(file, folder.File("first"));
}

TEST(WvFile, AnExistingFileIsLeftUntouchedWithoutOverwrite)
{
    Support::TemporaryFolder const folder;
    Support::WriteFile(folder.File("a"), "content");
    WvFile file;
    Support::expectThrown<FileOpenException>(
        [&] { file.OpenFileForWriting(folder.File("a"), false); }, NarrowExists);
    Support::expectThrown<FileOpenException>(
        [&] { file.OpenFileForWriting(Wide(folder.File("a")), false); }, WideExists);
    EXPECT_EQ(Support::ReadFile(folder.File("a")), "content");
    EXPECT_EQ(file.GetStream(), nullptr);
}

TEST(WvFile, AnExistingFileIsNamedBeforeAStreamInUse)
{
    Support::TemporaryFolder const folder;
    WvFile file;
    file.OpenFileForWriting(folder.File("a"), false);
    Support::expectThrown<FileOpenException>(
        [&] { file.OpenFileForWriting(folder.File("a"), false); }, NarrowExists);
}

TEST(WvFile, AnExistingFileIsTruncatedWithOverwrite)
{
    Support::TemporaryFolder const folder;
    for (bool const wide : {false, true}) {
        Support::WriteFile(folder.File("a"), std::string(1000, 'x'));
        WvFile file;
        if (wide)
            file.OpenFileForWriting(Wide(folder.File("a")), true);
        else
            file.OpenFileForWriting(folder.File("a"), true);
        file.WriteHeader();
        file.CloseFile();
        EXPECT_EQ(Support::ReadFile(folder.File("a")), Hex("89 57 56 46 0D 0A 1A 0A 31 2E 33 00"));
    }
}

TEST(WvFile, AFileThatCannotBeOpenedIsNamedInQuotes)
{
    Support::TemporaryFolder const folder;
    std::string const path = folder.File("missing/a");
    WvFile file;
    Support::expectThrown<MiscelleneousException>([&] { file.OpenFileForWriting(path, false); },
                                                  UnableToOpen(path));
    Support::expectThrown<MiscelleneousException>(
        [&] { file.OpenFileForWriting(Wide(path), true); }, UnableToOpen(path));
    Support::expectThrown<MiscelleneousException>(
        [&] { file.OpenFile(folder.File("absent"), "rb"); }, UnableToOpen(folder.File("absent")));
    Support::expectThrown<MiscelleneousException>([&] { file.OpenFile(std::string(), "wb"); },
                                                  UnableToOpen(""));
    EXPECT_EQ(file.GetStream(), nullptr);
    file.OpenFileForWriting(folder.File("a"), false);
    ExpectWritesTo(file, folder.File("a"));
}

TEST(WvFile, AWideNameAndModeAreNarrowedToTheirLowEightBits)
{
    Support::TemporaryFolder const folder;
    WvFile file;
    std::wstring const mode{wchar_t(0x100 + 'w'), wchar_t(0x200 + 'b')};
    file.OpenFile(Wide(folder.File("")) + wchar_t(0x141), mode.c_str());
    ExpectWritesTo(file, folder.File("A"));
}

TEST(WvFile, AWideNameThatExistsInItsNarrowedFormExists)
{
    Support::TemporaryFolder const folder;
    Support::WriteFile(folder.File("A"), "content");
    WvFile file;
    Support::expectThrown<FileOpenException>(
        [&] { file.OpenFileForWriting(Wide(folder.File("")) + wchar_t(0x141), false); },
        WideExists);
    EXPECT_EQ(Support::ReadFile(folder.File("A")), "content");
}

TEST(WvFile, AWideNameWithAZeroByteInItsNarrowedFormOpensNoOtherFile)
{
    Support::TemporaryFolder const folder;
    Support::WriteFile(folder.File("a"), "content");
    std::wstring const name = Wide(folder.File("a")) + wchar_t(0x100) + L"b";
    std::wstring const nameWithZero = Wide(folder.File("a")) + wchar_t(0) + L"b";
    WvFile file;
    for (bool const overwrite : {false, true}) {
        Support::expectThrown<MiscelleneousException>(
            [&] { file.OpenFileForWriting(name, overwrite); }, UnableToOpen(folder.File("a")));
        Support::expectThrown<MiscelleneousException>(
            [&] { file.OpenFileForWriting(nameWithZero, overwrite); },
            UnableToOpen(folder.File("a")));
    }
    EXPECT_EQ(Support::ReadFile(folder.File("a")), "content");
}

TEST(WvFile, ANarrowNameWithAZeroByteOpensNoOtherFile)
{
    Support::TemporaryFolder const folder;
    Support::WriteFile(folder.File("a"), "content");
    std::string const name = folder.File("a") + '\0' + "b";
    WvFile file;
    for (bool const overwrite : {false, true})
        Support::expectThrown<MiscelleneousException>(
            [&] { file.OpenFileForWriting(name, overwrite); }, UnableToOpen(folder.File("a")));
    EXPECT_EQ(Support::ReadFile(folder.File("a")), "content");
}

TEST(WvFile, AFailedHeaderIsReportedWhenTheBlocksAreSaved)
{
    WvFile file;
    file.OpenFileForWriting(std::string("/dev/full"), true);
    std::setvbuf(file.GetStream(), nullptr, _IONBF, 0);
    EXPECT_NO_THROW(file.WriteHeader());
    file.GetIndex().Put("Key", 1U);
    Support::expectThrown<Zyl2::Exception::FileWriteException>(
        [&] { file.GetIndex().WriteAllBuffersToFileStream(file.GetStream()); },
        {7, "Unable to write to file", "", ""});
    EXPECT_NO_THROW(file.CloseFile());
}

TEST(WvFile, ClosingClosesTheStreamAndTellsOfIt)
{
    Support::TemporaryFolder const folder;
    WvFile file;
    file.OpenFileForWriting(folder.File("a"), false);
    Support::LogCapture log;
    file.CloseFile();
    EXPECT_EQ(file.GetStream(), nullptr);
    EXPECT_EQ(log.Texts(), (std::vector<std::string>{"Closing file ...", "File closed."}));
    for (Support::LogCapture::Entry const& entry : log.entries) {
        EXPECT_EQ(entry.file, "Zyl2/Wvf/WvFile");
        EXPECT_NE(entry.function.find("Zyl2Wvf::WvFile::CloseFile"), std::string::npos);
        EXPECT_EQ(entry.severity, 1);
    }
}

TEST(WvFile, AFileThatTheSystemRefusesToCloseIsKnownToBe)
{
    WvFile file;
    file.OpenFileForWriting(std::string("/dev/full"), true);
    file.WriteHeader();
    EXPECT_FALSE(file.HasFailedToClose());
    EXPECT_NO_THROW(file.CloseFile());
    EXPECT_TRUE(file.HasFailedToClose());
    Support::TemporaryFolder const folder;
    file.OpenFileForWriting(folder.File("a"), false);
    file.CloseFile();
    EXPECT_FALSE(file.HasFailedToClose());
}

} // namespace
