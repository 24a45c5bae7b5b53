#include "TestFiles.h"

#include <read/frd/ByteStream.h>
#include <read/frd/Error.h>

#include <gtest/gtest.h>

#include <functional>

#include <sys/stat.h>

namespace {

using Frd::ByteStream;
using TestFiles::Folder;

std::string messageOf(std::function<void()> const& action)
{
    try {
        action();
        return "";
    } catch (Frd::Error const& error) {
        return error.what();
    }
}

TEST(ByteStream, ACutLineIsRefused)
{
    Folder const folder;
    ByteStream source(folder.write("f", "one\ntw"));
    std::string line;
    source.requireLine(line, "the test");
    EXPECT_EQ(messageOf([&] { source.readLine(line); }),
              "line 2: The file ends in the middle of a line.");
}

TEST(ByteStream, AnOverlongLineIsRefusedBeforeItIsReadWhole)
{
    Folder const folder;
    ByteStream source(folder.write("f", std::string(5000, 'x') + "\n"));
    std::string line;
    EXPECT_EQ(messageOf([&] { source.readLine(line); }), "line 1: The line is overlong.");
    EXPECT_LT(line.size(), 1100U);
}

TEST(ByteStream, ALineOfAThousandCharactersIsTaken)
{
    Folder const folder;
    ByteStream source(folder.write("f", std::string(1000, 'x') + "\n"));
    std::string line;
    ASSERT_TRUE(source.readLine(line));
    EXPECT_EQ(line.size(), 1000U);
}

TEST(ByteStream, ControlCharactersInALineAreRefused)
{
    Folder const folder;
    for (char const* const text : {"a\x01z\n", "a\x7Fz\n"}) {
        ByteStream source(folder.write("f", text));
        std::string line;
        EXPECT_EQ(messageOf([&] { source.readLine(line); }),
                  "line 1: The line holds a control character.");
    }
}

TEST(ByteStream, RecordsThatDoNotFitInTheFileAreRefusedBeforeAnyIsRead)
{
    Folder const folder;
    ByteStream source(folder.write("f", "one\n12345678"));
    std::string line;
    source.requireLine(line, "the test");
    EXPECT_EQ(messageOf([&] { source.requireRecords(2, 4, "the test"); }), "");
    EXPECT_EQ(messageOf([&] { source.requireRecords(3, 4, "the test"); }),
              "line 1: The file ends in the test: 3 records of 4 bytes do not fit in the 8 bytes "
              "left.");
    // So many that their bytes, counted in 64 bits, would be four.
    EXPECT_EQ(messageOf([&] { source.requireRecords(0x4000000000000001, 4, "the test"); }),
              "line 1: The file ends in the test: 4611686018427387905 records of 4 bytes do not "
              "fit in the 8 bytes left.");
}

TEST(ByteStream, AMissingFileAndAFolderAreRefused)
{
    Folder const folder;
    EXPECT_EQ(messageOf([&] { ByteStream source(folder.path("none")); }),
              "The file cannot be opened: No such file or directory.");
    EXPECT_EQ(messageOf([&] { ByteStream source(folder.path(".")); }),
              "The file is not a regular file.");
}

TEST(ByteStream, ANamedPipeIsRefusedWithoutWaitingForItsWriter)
{
    Folder const folder;
    std::string const pipe = folder.path("pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(messageOf([&] { ByteStream source(pipe); }), "The file is not a regular file.");
}

} // namespace
