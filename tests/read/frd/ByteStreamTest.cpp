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

TEST(ByteStream, LinesComeWithoutTheirEnds)
{
    Folder const folder;
    ByteStream source(folder.write("f", "one\ntwo\r\n\nlast\n"));
    std::string line;
    for (char const* expected : {"one", "two", "", "last"}) {
        ASSERT_TRUE(source.readLine(line));
        EXPECT_EQ(line, expected);
    }
    EXPECT_FALSE(source.readLine(line));
}

TEST(ByteStream, RecordsAndLinesMayFollowEachOther)
{
    Folder const folder;
    ByteStream source(folder.write("f", std::string("head\n\0\n\xFF\x01tail\n", 14)));
    std::string line;
    source.requireLine(line, "the test");
    EXPECT_EQ(std::string(source.readRecord(4, "the test"), 4), std::string("\0\n\xFF\x01", 4));
    source.requireLine(line, "the test");
    EXPECT_EQ(line, "tail");
    EXPECT_EQ(source.remaining(), 0U);
}

TEST(ByteStream, FailuresNameTheLineUntilARecordWentBy)
{
    Folder const folder;
    ByteStream source(folder.write("f", "one\ntwo\nABCDthree\n"));
    std::string line;
    source.requireLine(line, "the test");
    source.requireLine(line, "the test");
    EXPECT_EQ(messageOf([&] { source.fail("Bad."); }), "line 2: Bad.");
    source.readRecord(4, "the test");
    EXPECT_EQ(messageOf([&] { source.fail("Bad."); }), "byte 8: Bad.");
    source.requireLine(line, "the test");
    EXPECT_EQ(messageOf([&] { source.fail("Bad."); }), "byte 12: Bad.");
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
    ByteStream source(folder.write("f", "a\x01z\n"));
    std::string line;
    EXPECT_EQ(messageOf([&] { source.readLine(line); }),
              "line 1: The line holds a control character.");
}

TEST(ByteStream, AMissingLineIsRefusedWithWhatItBelongsTo)
{
    Folder const folder;
    ByteStream source(folder.write("f", "one\n"));
    std::string line;
    source.requireLine(line, "the test");
    EXPECT_EQ(messageOf([&] { source.requireLine(line, "the test"); }),
              "line 1: The file ends in the test.");
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
    EXPECT_EQ(messageOf([&] { source.requireRecords(0xFFFFFFFFFFFFFFFF, 4, "the test"); }),
              "line 1: The file ends in the test: 18446744073709551615 records of 4 bytes do not "
              "fit in the 8 bytes left.");
}

TEST(ByteStream, ACutRecordIsRefused)
{
    Folder const folder;
    ByteStream source(folder.write("f", "123"));
    EXPECT_EQ(messageOf([&] { source.readRecord(4, "the test"); }),
              "byte 0: The file ends in the test.");
}

TEST(ByteStream, StartsWithTakesNothing)
{
    Folder const folder;
    ByteStream source(folder.write("f", "one\n"));
    EXPECT_TRUE(source.startsWith("on"));
    EXPECT_FALSE(source.startsWith("two"));
    EXPECT_FALSE(source.startsWith("one\nand more"));
    std::string line;
    ASSERT_TRUE(source.readLine(line));
    EXPECT_EQ(line, "one");
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
