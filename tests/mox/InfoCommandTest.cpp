#include "mox/commands/InfoCommand.h"

#include "mox/ModelFile.h"
#include "mox/Outcome.h"
#include "moxread/Sample.h"
#include "moxread/TestFile.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sstream>
#include <string>
#include <vector>

using namespace MoxReadTest;

namespace {

using Mox::InfoArguments;
using Mox::showInfo;

Outcome infoOf(std::string const& content, bool json)
{
    const TemporaryFile file(content);
    std::ostringstream out;
    std::ostringstream err;
    InfoArguments options;
    options.file = file.path();
    options.json = json;
    int const status = showInfo(options, out, err);
    return {status, out.str(), err.str()};
}

TEST(InfoCommand, ShowsBlocksSumsAndWritings)
{
    std::string const content = assemble(slotsFor(Sample().plainBlocks()));
    Outcome const outcome = infoOf(content, false);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "mox 1.3: " + std::to_string(content.size()) +
                               R"( bytes, 2800 of them header and root index
20 slots: 6 blocks, 14 spare
written "Thu Nov 20 15:30:00 2025 UTC" on host "host" by user "me", format "1.3", texts "one" "two" ""

  slot   id  key                    position        size     content  compressed
     0    1  Heavy Data                 2800          32          32  no
     1    2  Mox Tree                   2832         231         231  no
     2    3  Light Data                 3063         200         200  no
     3    4  Attributes                 3263         178         178  no
     4    5  Resources                  3441          84          84  no
     5    6  Global Information         3525          90          90  no

key                  blocks          size       content     ratio
Heavy Data                1            32            32      1.00
Mox Tree                  1           231           231      1.00
Light Data                1           200           200      1.00
Attributes                1           178           178      1.00
Resources                 1            84            84      1.00
Global Information        1            90            90      1.00
in all                    6           815           815      1.00
)");
}

TEST(InfoCommand, CompressedBlocksTellWhatTheyInflateTo)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    blocks[0] = {"Heavy Data", 1, deflated(Sample().heavy() + std::string(10000, 'x'))};
    std::string const content = assemble(slotsFor(blocks));
    nlohmann::json const json = nlohmann::json::parse(infoOf(content, true).out);
    nlohmann::json const& block = json.at("blocks").at(0);
    std::size_t const size = blocks[0].block.size();
    EXPECT_EQ(block, nlohmann::json({{"slot", 0},
                                     {"key", "Heavy Data"},
                                     {"id", 1},
                                     {"position", 2800},
                                     {"size", size},
                                     {"compressed", true},
                                     {"writtenEarly", false},
                                     {"content", 10032}}));
    EXPECT_DOUBLE_EQ(json.at("keys").at(0).at("ratio").get<double>(),
                     10032. / static_cast<double>(size));
    EXPECT_EQ(json.at("total").at("blockCount"), 6);
    EXPECT_EQ(json.at("total").at("size"), content.size() - 2800);
    EXPECT_EQ(json.at("slotCount"), 20);
    EXPECT_EQ(json.at("spareSlotCount"), 14);
    EXPECT_EQ(json.at("writings").at(0).at("host"), "host");
}

TEST(InfoCommand, ManyBlocksOfAKeyAreSummedUp)
{
    std::vector<TestBlock> blocks = Sample().blocks();
    for (int i = 0; i < 30; ++i)
        blocks.push_back({"Heavy Data", 32, "1234"});
    nlohmann::json const json = nlohmann::json::parse(infoOf(assemble(slotsFor(blocks)), true).out);
    EXPECT_EQ(json.at("slotCount"), 220);
    EXPECT_EQ(json.at("blocks").size(), 37U);
    EXPECT_EQ(json.at("blocks").at(19).at("key"), "Index Block");
    EXPECT_EQ(json.at("blocks").at(20).at("writtenEarly"), true);
    EXPECT_EQ(json.at("keys").at(0).at("blockCount"), 31);
    EXPECT_EQ(json.at("keys").at(0).at("content"), 32 + 30 * 4);
}

TEST(InfoCommand, ABlockWithoutBytesHasNoRatio)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    blocks.push_back({"View Points", 0, ""});
    std::string const content = assemble(slotsFor(blocks));
    EXPECT_NE(infoOf(content, false)
                  .out.find("View Points               1             0             "
                            "0         -\n"),
              std::string::npos);
    EXPECT_EQ(nlohmann::json::parse(infoOf(content, true).out).at("keys").at(6).at("ratio"),
              nullptr);
}

} // namespace
