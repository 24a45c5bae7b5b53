#include "LsCommand.h"

#include "Bytes.h"
#include "Sample.h"
#include "TestFile.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace MoxReadTest;

TEST(LsCommand, ShowsAllThatIsInAFile)
{
    const std::string content = Sample().file();
    const TemporaryFile file(content);
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(listFile(file.path(), out, err), 0);
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(
        out.str(),
        "mox 1.3: 6 blocks, 4 nodes, 3 datasets, " + std::to_string(content.size()) +
            " bytes\n"
            R"(written "Thu Nov 20 15:30:00 2025 UTC" on host "host" by user "me", format "1.3", texts "one" "two" ""
1 Group "root"
  translation 1 2 3
  rotation 0 1 0 0.5
  scale 2 2 2
  flag 1
  attribute "a" = 7
  attribute "b" = 1.5 (float)
  attribute "c" = "text"
  attribute "d" = 2.5 (double)
  2 Shape "part"
    material: diffuse 0.8 0.8 0.8 1, specular 0 0 0 1, emissive 0 0 0 1, ambient 0.16 0.16 0.16 0.2, transparency 0, shininess 0.2, flag 1
    3 Geometry "part"
      dataset "Coordinates": type 1, float, width 3, 2 rows, range -1..3 and 1 NaN, vibration
        attribute "t" = 0.5 (float)
      dataset "Ids": type 12, uint32, width 1, 2 rows, range 67305985..336794129
      dataset "Coordinates" step "t2": type 1, float, width 3, 2 rows, range -1..3 and 1 NaN, link to node 3 "Coordinates"
  4 Group "rest"
heavy data: 32 bytes, 0 of them in no dataset
)");
}

TEST(LsCommand, NamesCannotControlTheTerminal)
{
    Sample sample;
    sample.nodes[3].name = "\x1B[2J";
    const TemporaryFile file(sample.file());
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(listFile(file.path(), out, err), 0);
    EXPECT_EQ(out.str().find('\x1B'), std::string::npos);
    EXPECT_NE(out.str().find(R"(4 Group "\x1B[2J")"), std::string::npos);
}

TEST(LsCommand, TellsHowMuchOfTheHeavyDataIsUnused)
{
    std::vector<TestBlock> blocks = Sample().blocks();
    blocks.push_back({"Heavy Data", 0, "12345678"});
    const TemporaryFile file(assemble(slotsFor(blocks)));
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(listFile(file.path(), out, err), 0);
    EXPECT_NE(out.str().find("heavy data: 40 bytes, 8 of them in no dataset\n"), std::string::npos);
}

TEST(LsCommand, ShowsResultAttributesByTheirNumber)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    std::string& global = blocks[5].block;
    global.replace(global.size() - 4, 4, Bytes().u32(1).raw(std::string(96, 'r')).str());
    const TemporaryFile file(assemble(slotsFor(blocks)));
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(listFile(file.path(), out, err), 0);
    EXPECT_NE(out.str().find("\nresult attributes: 1 of 96 bytes\n"), std::string::npos);
}

TEST(LsCommand, ABadFileGetsOneLineAndNoListing)
{
    std::vector<TestBlock> blocks = Sample().blocks();
    blocks[0].block.back() = static_cast<char>(blocks[0].block.back() ^ 1);
    const TemporaryFile file(assemble(slotsFor(blocks)));
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(listFile(file.path(), out, err), 1);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), file.path() + ": slot 0 \"Heavy Data\" at byte 2800: the zlib stream is "
                                       "damaged (incorrect data check)\n");
}
