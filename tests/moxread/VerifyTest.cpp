#include "moxread/Verify.h"

#include "moxread/FormatError.h"

#include "Bytes.h"
#include "Sample.h"
#include "TestFile.h"

#include <gtest/gtest.h>

#include <functional>

using namespace MoxReadTest;

namespace {

std::string verdictOn(std::string const& file)
{
    TemporaryFile const temporary(file);
    try {
        MoxRead::verify(temporary.path());
        return "ok";
    } catch (MoxRead::FormatError const& error) {
        return error.what();
    }
}

// The verdict on the sample after a change to it.
std::string verdictAfter(std::function<void(Sample&)> const& change)
{
    Sample sample;
    change(sample);
    return verdictOn(sample.file());
}

// The verdict on the sample's file after a change to its index.
std::string verdictAfterSlots(std::function<void(std::vector<TestSlot>&)> const& change)
{
    std::vector<TestSlot> slots = slotsFor(Sample().blocks());
    change(slots);
    return verdictOn(assemble(slots));
}

// The verdict on the sample's file with another block in the slot of "Heavy Data".
std::string verdictWithHeavyBlock(std::string const& block)
{
    std::vector<TestBlock> blocks = Sample().blocks();
    blocks[0].block = block;
    return verdictOn(assemble(slotsFor(blocks)));
}

// The verdict on the sample's file with more bytes at the end of one stream.
std::string verdictWithTail(std::size_t block, std::string const& tail)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    blocks[block].block += tail;
    return verdictOn(assemble(slotsFor(blocks)));
}

// The verdict on the sample's file with the last byte of one stream missing.
std::string verdictWithoutLastByte(std::size_t block)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    blocks[block].block.pop_back();
    return verdictOn(assemble(slotsFor(blocks)));
}

std::string patched(std::string file, std::size_t offset, std::string const& bytes)
{
    return file.replace(offset, bytes.size(), bytes);
}

std::vector<TestBlock> manyHeavyBlocks(std::size_t count)
{
    std::vector<TestBlock> blocks(count, {"Heavy Data", 0, "1234"});
    std::vector<TestBlock> const sample = Sample().blocks();
    blocks.insert(blocks.begin(), sample.begin(), sample.end());
    return blocks;
}

enum Stream : std::size_t
{
    heavy,
    tree,
    light,
    attributes,
    resources,
    global
};

} // namespace

// --- What is sound

TEST(Verify, CountsWhatIsInAFileWithARootGroupOnly)
{
    std::string const file = minimalFile();
    TemporaryFile const temporary(file);
    MoxRead::Summary const summary = MoxRead::verify(temporary.path());
    EXPECT_EQ(summary.blocks, 4U);
    EXPECT_EQ(summary.nodes, 1U);
    EXPECT_EQ(summary.datasets, 0U);
    EXPECT_EQ(summary.bytes, file.size());
}

TEST(Verify, CountsWhatIsInAFileWithCompressedDatasetsAndALink)
{
    std::string const file = Sample().file();
    TemporaryFile const temporary(file);
    MoxRead::Summary const summary = MoxRead::verify(temporary.path());
    EXPECT_EQ(summary.blocks, 6U);
    EXPECT_EQ(summary.nodes, 4U);
    EXPECT_EQ(summary.datasets, 3U);
    EXPECT_EQ(summary.bytes, file.size());
}

TEST(Verify, AcceptsUncompressedBlocks)
{
    EXPECT_EQ(verdictOn(assemble(slotsFor(Sample().plainBlocks()))), "ok");
}

TEST(Verify, AcceptsARootWithoutContent)
{
    Sample sample;
    sample.nodes.resize(1);
    sample.nodes[0].first = sample.nodes[0].last = 0;
    sample.nodes[0].name = sample.nodes[0].type = sample.nodes[0].version = "";
    EXPECT_EQ(verdictOn(assemble(slotsFor({{"Mox Tree", 1, deflated(sample.tree())},
                                           {"Global Information", 1, deflated(sample.global())}}))),
              "ok");
}

TEST(Verify, AcceptsResultAttributesOf96Bytes)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    std::string& bytes = blocks[global].block;
    bytes.replace(bytes.size() - 4, 4, Bytes().u32(2).raw(std::string(192, 'r')).str());
    EXPECT_EQ(verdictOn(assemble(slotsFor(blocks))), "ok");
}

TEST(Verify, FollowsTheIndexBlockInSlot19)
{
    std::string const file = assemble(slotsFor(manyHeavyBlocks(20)));
    TemporaryFile const temporary(file);
    EXPECT_EQ(MoxRead::verify(temporary.path()).blocks, 27U);
}

TEST(Verify, FollowsAChainOfThreeIndexBlocks)
{
    std::string const file = assemble(slotsFor(manyHeavyBlocks(420)));
    TemporaryFile const temporary(file);
    EXPECT_EQ(MoxRead::verify(temporary.path()).blocks, 429U);
}

TEST(Verify, AcceptsAStreamThatIsCutIntoBlocksWithinItsValues)
{
    Sample const sample;
    std::vector<TestBlock> blocks = sample.blocks();
    blocks.erase(blocks.begin() + tree);
    for (char const byte : sample.tree())
        blocks.push_back({"Mox Tree", 1, deflated(std::string(1, byte))});
    EXPECT_EQ(verdictOn(assemble(slotsFor(blocks))), "ok");
}

TEST(Verify, AcceptsHeavyBytesThatBelongToNoDataset)
{
    EXPECT_EQ(verdictWithTail(heavy, "unused"), "ok");
}

// --- Header and root index

TEST(Verify, AFileThatCannotBeOpenedIsNamedSo)
{
    try {
        MoxRead::verify(testing::TempDir() + "no such file.mox");
        FAIL();
    } catch (MoxRead::FormatError const& error) {
        EXPECT_STREQ(error.what(), "cannot be opened: No such file or directory");
    }
}

TEST(Verify, AFolderIsNoFile)
{
    try {
        MoxRead::verify(testing::TempDir());
        FAIL();
    } catch (MoxRead::FormatError const& error) {
        EXPECT_STREQ(error.what(), "not a regular file");
    }
}

TEST(Verify, AForeignFileIsNoMoxFile)
{
    EXPECT_EQ(verdictOn("solid cube\nfacet normal 0 0 1\n"),
              "not a mox file: it does not begin with the signature");
    EXPECT_EQ(verdictOn("x"), "not a mox file: it does not begin with the signature");
    EXPECT_EQ(verdictOn(patched(Sample().file(), 4, "\n")),
              "not a mox file: it does not begin with the signature");
}

TEST(Verify, AnEmptyFileIsIncomplete)
{
    EXPECT_EQ(verdictOn(""), "incomplete: the file ends at byte 0, within the header");
}

TEST(Verify, AFileThatEndsInItsHeaderIsIncomplete)
{
    EXPECT_EQ(verdictOn(Sample().file().substr(0, 11)),
              "incomplete: the file ends at byte 11, within the header");
}

TEST(Verify, AnotherVersionIsRefused)
{
    EXPECT_EQ(verdictOn(patched(Sample().file(), 10, "2")),
              R"(version at byte 8 is "1.2\x00", not "1.3" and a zero byte)");
    EXPECT_EQ(verdictOn(patched(Sample().file(), 11, " ")),
              R"(version at byte 8 is "1.3 ", not "1.3" and a zero byte)");
}

TEST(Verify, AFileThatEndsInItsRootIndexIsIncomplete)
{
    EXPECT_EQ(verdictOn(Sample().file().substr(0, 2799)),
              "incomplete: the file ends at byte 2799, within the root index");
}

TEST(Verify, AFileThatWasNotClosedIsIncomplete)
{
    EXPECT_EQ(verdictOn(patched(Sample().file(), 12, std::string(2788, '\0'))),
              "incomplete: the root index at byte 12 was never written");
}

TEST(Verify, ARootIndexThatIsCutShortAnywhereIsIncomplete)
{
    std::string const file = Sample().file();
    // What the last entry holds behind its name is zero in any case.
    std::size_t const end = 20 + 19 * 139 + 5 + spareName.size();
    for (std::size_t cut = 20; cut < end; ++cut)
        ASSERT_EQ(verdictOn(patched(file, cut, std::string(2800 - cut, '\0'))),
                  "incomplete: the root index at byte 12 was written in part only")
            << cut;
    EXPECT_EQ(verdictOn(patched(file, end, std::string(2800 - end, '\0'))), "ok");
}

TEST(Verify, AWrongRootIndexLengthIsRefused)
{
    EXPECT_EQ(verdictOn(patched(Sample().file(), 12, Bytes().u32(2785).str())),
              "root index length at byte 12 is 2785, not 2784");
}

TEST(Verify, AWrongRootIndexCountIsRefused)
{
    EXPECT_EQ(verdictOn(patched(Sample().file(), 16, Bytes().u32(19).str())),
              "root index entry count at byte 16 is 19, not 20");
}

// --- Slots

TEST(Verify, IdsStartAgainAt0AfterSlot254)
{
    std::vector<TestSlot> slots = slotsFor(manyHeavyBlocks(420));
    ASSERT_EQ(slots[254].id, 255U);
    ASSERT_EQ(slots[255].id, 0U);
    slots[255].id = 1;
    std::uint64_t offset = 2800;
    for (std::size_t i = 0; i < 219; ++i)
        offset += slots[i].size;
    offset += 4 + (255 - 220) * 139;
    EXPECT_EQ(verdictOn(assemble(slots)),
              "slot 255: id at byte " + std::to_string(offset) + " is 1, not 0");
}

TEST(Verify, AnUnknownBlockNameIsRefused)
{
    EXPECT_EQ(verdictAfterSlots([](auto& slots) { slots[3].name = "attributes"; }),
              R"(slot 3: unknown block name "attributes")");
    EXPECT_EQ(verdictAfterSlots([](auto& slots) { slots[3].name = "\x0BIndex Block"; }),
              R"(slot 3: unknown block name "\x0BIndex Block")");
    EXPECT_EQ(verdictAfterSlots([](auto& slots) { slots[3].name = ""; }),
              R"(slot 3: unknown block name "")");
}

TEST(Verify, UnknownTransformationsAreRefused)
{
    EXPECT_EQ(verdictAfterSlots([](auto& slots) { slots[3].transformations = 3; }),
              "slot 3: transformations at byte 574 are 3, not 0, 1, 32 or 33");
    EXPECT_EQ(verdictAfterSlots([](auto& slots) { slots[3].transformations = 129; }),
              "slot 3: transformations at byte 574 are 129, not 0, 1, 32 or 33");
}

TEST(Verify, ABlockOtherThanHeavyDataThatWasWrittenEarlyIsRefused)
{
    for (unsigned const transformations : {32U, 33U}) {
        EXPECT_EQ(
            verdictAfterSlots([&](auto& slots) { slots[3].transformations = transformations; }),
            "slot 3: transformations at byte 574 are " + std::to_string(transformations) +
                R"(, but no block of "Attributes" is written early)");
    }
}

TEST(Verify, ABlockAfterASpareSlotIsRefused)
{
    std::string const file = Sample().file();
    EXPECT_EQ(verdictAfterSlots([](auto& slots) {
                  slots[7] = slots[5];
                  slots[7].id = 8;
                  slots[5] = TestSlot();
                  slots[5].id = 6;
                  slots[5].name = spareName;
              }),
              "slot 7 \"Global Information\" at byte " +
                  std::to_string(file.size() - deflated(Sample().global()).size()) +
                  ": a block follows a spare slot");
}

TEST(Verify, ABlockThatEndsAfterTheFileIsIncomplete)
{
    EXPECT_EQ(verdictAfterSlots([](auto& slots) { slots[0].size = 100000; }),
              "incomplete: slot 0 \"Heavy Data\" at byte 2800 ends at byte 102800, the file at "
              "byte " +
                  std::to_string(Sample().file().size()));
}

TEST(Verify, BytesAfterTheLastBlockAreRefused)
{
    std::string const file = Sample().file();
    EXPECT_EQ(verdictOn(file + "abc"),
              "3 bytes follow the last block, from byte " + std::to_string(file.size()));
}

// --- Index blocks

TEST(Verify, AGroupThatEndsWithAnotherBlockIsRefused)
{
    std::vector<TestSlot> slots = slotsFor(std::vector<TestBlock>(19, {"Heavy Data", 0, ""}));
    slots[19].name = "Heavy Data";
    EXPECT_EQ(verdictOn(assemble(slots)),
              "slot 19 \"Heavy Data\" at byte 2800: the last slot of a group is neither spare nor "
              "an index block");
}

TEST(Verify, AnIndexBlockOfAnotherSizeIsRefused)
{
    std::vector<TestSlot> slots = slotsFor(std::vector<TestBlock>(20, {"Heavy Data", 0, ""}));
    slots[19].size = 27803;
    EXPECT_EQ(verdictOn(assemble(slots)), R"(slot 19 "\x0BIndex Block " at byte 2800: )"
                                          "size of the index block is 27803, not 27804");
}

TEST(Verify, AnIndexBlockWithOtherTransformationsIsRefused)
{
    for (unsigned const transformations : {0U, 1U, 33U}) {
        std::vector<TestSlot> slots = slotsFor(std::vector<TestBlock>(20, {"Heavy Data", 0, ""}));
        slots[19].transformations = transformations;
        EXPECT_EQ(verdictOn(assemble(slots)), R"(slot 19 "\x0BIndex Block " at byte 2800: )"
                                              "index block has transformations " +
                                                  std::to_string(transformations) + ", not 32");
    }
}

TEST(Verify, AnIndexBlockWithAnotherCountIsRefused)
{
    std::string const file = assemble(slotsFor(std::vector<TestBlock>(20, {"Heavy Data", 0, ""})));
    EXPECT_EQ(verdictOn(patched(file, 2800, Bytes().u32(199).str())),
              R"(slot 19 "\x0BIndex Block " at byte 2800: entry count is 199, not 200)");
}

TEST(Verify, AFileThatEndsInAnIndexBlockIsIncomplete)
{
    std::string const file = assemble(slotsFor(std::vector<TestBlock>(20, {"Heavy Data", 0, ""})));
    EXPECT_EQ(
        verdictOn(file.substr(0, 30000)),
        R"(incomplete: slot 19 "\x0BIndex Block " at byte 2800 ends at byte 30604, the file at )"
        "byte 30000");
}

TEST(Verify, AnIndexBlockThatWasNeverWrittenIsIncomplete)
{
    std::string const file = assemble(slotsFor(std::vector<TestBlock>(20, {"Heavy Data", 0, "a"})));
    EXPECT_EQ(verdictOn(patched(file, 2819, std::string(27804, '\0'))),
              R"(incomplete: slot 19 "\x0BIndex Block " at byte 2819 was never written)");
}

TEST(Verify, ABlockThatAnIndexBlockDoesNotKnowOfYetIsIncomplete)
{
    std::vector<TestSlot> slots = slotsFor(std::vector<TestBlock>(20, {"Heavy Data", 0, ""}));
    std::string const file = assemble(slots);
    EXPECT_EQ(verdictOn(file + "abc"), "incomplete: 3 bytes follow the last block, from byte " +
                                           std::to_string(file.size()));
}

TEST(Verify, AnIndexBlockThatIsCutShortIsIncomplete)
{
    std::string const file = assemble(slotsFor(std::vector<TestBlock>(20, {"Heavy Data", 0, "a"})));
    std::size_t const lastEntry = 2819 + 4 + 199 * 139;
    for (std::size_t const cut : {std::size_t{2823}, std::size_t{2824}, std::size_t{2819 + 24576},
                                  lastEntry, lastEntry + 1, lastEntry + 10})
        EXPECT_EQ(verdictOn(patched(file, cut, std::string(2819 + 27804 - cut, '\0'))),
                  R"(incomplete: slot 19 "\x0BIndex Block " at byte 2819 was written in part only)")
            << cut;
}

TEST(Verify, AnIndexBlockThatIsCutShortInTheEntryOfTheNextIsIncomplete)
{
    std::string const file = assemble(slotsFor(std::vector<TestBlock>(230, {"Heavy Data", 0, ""})));
    std::size_t const lastEntry = 2800 + 4 + 199 * 139;
    for (std::size_t const cut : {lastEntry, lastEntry + 10, lastEntry + 100, lastEntry + 133})
        EXPECT_EQ(verdictOn(patched(file, cut, std::string(2800 + 27804 - cut, '\0'))),
                  R"(incomplete: slot 19 "\x0BIndex Block " at byte 2800 was written in part only)")
            << cut;
}

// --- Compressed blocks

TEST(Verify, ACompressedBlockWithoutRoomForItsLengthIsRefused)
{
    EXPECT_EQ(verdictWithHeavyBlock("123"),
              "slot 0 \"Heavy Data\" at byte 2800: a compressed block of 3 bytes has no room for "
              "its length");
}

TEST(Verify, AStatedLengthThatCannotBeIsRefusedBeforeMemoryIsAskedFor)
{
    std::string block = deflated(Sample().heavy());
    std::string const streamSize = std::to_string(block.size() - 4);
    block.replace(0, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(verdictWithHeavyBlock(block), "slot 0 \"Heavy Data\" at byte 2800: " + streamSize +
                                                " compressed bytes cannot hold the stated "
                                                "4294967295 bytes");
}

TEST(Verify, AStreamThatInflatesToLessIsRefused)
{
    std::string block = deflated(Sample().heavy());
    EXPECT_EQ(verdictWithHeavyBlock(block.replace(0, 4, Bytes().u32(33).str())),
              "slot 0 \"Heavy Data\" at byte 2800: the zlib stream inflates to 32 bytes, not to "
              "the stated 33");
}

TEST(Verify, AStreamThatInflatesToMoreIsRefused)
{
    std::string block = deflated(Sample().heavy() + "!");
    EXPECT_EQ(verdictWithHeavyBlock(block.replace(0, 4, Bytes().u32(32).str())),
              "slot 0 \"Heavy Data\" at byte 2800: the zlib stream inflates to more than the "
              "stated 32 bytes");
}

TEST(Verify, BytesAfterTheStreamOfABlockAreRefused)
{
    EXPECT_EQ(verdictWithHeavyBlock(deflated(Sample().heavy()) + "12345"),
              "slot 0 \"Heavy Data\" at byte 2800: 5 bytes follow the zlib stream");
}

TEST(Verify, AStreamThatEndsEarlyIsRefused)
{
    std::string block = deflated(Sample().heavy());
    block.pop_back();
    EXPECT_EQ(verdictWithHeavyBlock(block),
              "slot 0 \"Heavy Data\" at byte 2800: the zlib stream ends early");
}

TEST(Verify, AStreamWithAWrongCheckSumIsRefused)
{
    std::string block = deflated(Sample().heavy());
    block.back() = static_cast<char>(block.back() ^ 1);
    EXPECT_EQ(verdictWithHeavyBlock(block), "slot 0 \"Heavy Data\" at byte 2800: the zlib stream "
                                            "is damaged (incorrect data check)");
}

TEST(Verify, AnEmptyCompressedBlockStillHoldsAStream)
{
    auto const verdictWith = [](std::string const& block) {
        std::vector<TestBlock> blocks = Sample().blocks();
        blocks.push_back({"View Points", 1, block});
        return verdictOn(assemble(slotsFor(blocks)));
    };
    EXPECT_EQ(verdictWith(deflated("")), "ok");
    EXPECT_NE(verdictWith(std::string(4, '\0')).find("the zlib stream ends early"),
              std::string::npos);
}

// --- Tree

TEST(Verify, AFileWithoutATreeIsRefused)
{
    EXPECT_EQ(verdictOn(assemble(slotsFor({}))),
              R"(byte 0 of "Mox Tree": 4 bytes are needed, 0 are left)");
}

TEST(Verify, ANodeCountThatTheStreamCannotHoldIsRefused)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    blocks[tree].block.replace(0, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(verdictOn(assemble(slotsFor(blocks))),
              R"(byte 0 of "Mox Tree": node count 4294967295 is more than the remaining )" +
                  std::to_string(blocks[tree].block.size() - 4) + " bytes can hold");
}

TEST(Verify, AParentThatIsNoEarlierNodeIsRefused)
{
    for (std::uint32_t const parent : {0U, 3U, 4U, 4294967295U}) {
        EXPECT_EQ(verdictAfter([&](Sample& sample) { sample.nodes[2].parent = parent; }),
                  "node 3: parent is " + std::to_string(parent) + ", not an earlier node");
    }
}

TEST(Verify, AWrongNextSiblingIsRefused)
{
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.nodes[1].next = 0; }),
              "node 2: next sibling is 0, not 4");
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.nodes[0].next = 1; }),
              "node 1: next sibling is 1, not 0");
}

// --- Light data

TEST(Verify, AVariableCountThatTheStreamCannotHoldIsRefused)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    blocks[light].block.replace(41, 4, Bytes().u32(9).str());
    EXPECT_EQ(verdictOn(assemble(slotsFor(blocks))),
              R"(node 3: byte 41 of "Light Data": variable count 9 is more than the remaining 155 )"
              "bytes can hold");
}

TEST(Verify, AnUnknownVariableTypeIsRefused)
{
    for (std::uint32_t const type : {0U, 2U, 7U, 11U, 29U, 0xFFFFFFU}) {
        EXPECT_EQ(verdictAfter([&](Sample& sample) { sample.variables[1].type = type; }),
                  R"(node 3: variable 1: "Ids": byte 97 of "Light Data": unknown variable type )" +
                      std::to_string(type));
    }
}

TEST(Verify, FlagsOfTheArrayThatAreSetAreRefused)
{
    std::string const place = R"(node 3: variable 1: "Ids": byte )";
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.variables[1].flag1 = 1; }),
              place + R"(107 of "Light Data": a flag of the array is 1, not 0)");
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.variables[1].flag2 = 1; }),
              place + R"(108 of "Light Data": a flag of the array is 1, not 0)");
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.variables[1].flag3 = 1; }),
              place + R"(117 of "Light Data": a flag of the array is 1, not 0)");
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.variables[1].flag3 = 255; }),
              place + R"(117 of "Light Data" is 255, not a flag (0 or 1))");
}

TEST(Verify, NumbersOfTheArrayOtherThanZeroAreRefused)
{
    std::string const place = R"(node 3: variable 1: "Ids": byte )";
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.variables[1].float1 = 0x3F800000; }),
              place + R"(109 of "Light Data": a number of the array is not 0)");
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.variables[1].float2 = 0x80000000; }),
              place + R"(113 of "Light Data": a number of the array is not 0)");
}

// --- Attributes

TEST(Verify, AnAttributeCountThatTheStreamCannotHoldIsRefused)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    blocks[attributes].block.replace(0, 4, Bytes().u32(44).str());
    EXPECT_EQ(
        verdictOn(assemble(slotsFor(blocks))),
        R"(node 1: byte 0 of "Attributes": attribute count 44 is more than the remaining 174 )"
        "bytes can hold");
}

TEST(Verify, AttributeNamesOutOfOrderAreRefused)
{
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.attributes[0].names[2] = "B"; }),
              R"(node 1: byte 14 of "Attributes": attribute "B" does not come after "b" in order)");
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.attributes[0].names[2] = "b"; }),
              R"(node 1: byte 14 of "Attributes": attribute "b" does not come after "b" in order)");
}

TEST(Verify, ACountOfValuesThatDiffersFromTheTagsIsRefused)
{
    std::string const place = "node 1: byte ";
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.attributes[0].uint32s.push_back(1); }),
              place + R"(32 of "Attributes": count of the uint32 attributes is 2, not 1)");
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.attributes[0].floats.clear(); }),
              place + R"(40 of "Attributes": count of the float attributes is 0, not 1)");
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.attributes[0].doubles.push_back(1); }),
              place + R"(48 of "Attributes": count of the double attributes is 2, not 1)");
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.attributes[0].strings.clear(); }),
              place + R"(60 of "Attributes": count of the string attributes is 0, not 1)");
}

TEST(Verify, AStringLongerThanItsStreamIsRefused)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    blocks[attributes].block.replace(4, 4, "\xFF\xFF\xFF\x7F");
    EXPECT_EQ(verdictOn(assemble(slotsFor(blocks))),
              R"(node 1: byte 8 of "Attributes": 2147483647 bytes are needed, 170 are left)");
}

// --- Resources

TEST(Verify, AMaterialMoreThanThereAreShapesIsRefused)
{
    EXPECT_EQ(verdictWithTail(resources, Sample().resources()),
              R"(84 bytes of "Resources" belong to no record, from byte 84)");
}

// --- Global information

TEST(Verify, AFileWithoutAWritingRecordIsRefused)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    blocks[global].block = std::string(8, '\0');
    EXPECT_EQ(verdictOn(assemble(slotsFor(blocks))),
              R"(byte 0 of "Global Information": there is no writing record)");
}

TEST(Verify, AWritingRecordCountThatTheStreamCannotHoldIsRefused)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    blocks[global].block.replace(0, 4, Bytes().u32(3).str());
    EXPECT_EQ(
        verdictOn(assemble(slotsFor(blocks))),
        R"(byte 0 of "Global Information": writing record count 3 is more than the remaining )"
        "86 bytes can hold");
}

TEST(Verify, AResultAttributesCountThatTheStreamCannotHoldIsRefused)
{
    std::vector<TestBlock> blocks = Sample().plainBlocks();
    blocks[global].block.replace(86, 4, Bytes().u32(1).str());
    EXPECT_EQ(verdictOn(assemble(slotsFor(blocks))),
              R"(byte 86 of "Global Information": result attributes count 1 is more than the )"
              "remaining 0 bytes can hold");
}

TEST(Verify, ContentOfTheViewPointsIsRefused)
{
    std::vector<TestBlock> blocks = Sample().blocks();
    blocks.push_back({"View Points", 1, deflated("view")});
    EXPECT_EQ(verdictOn(assemble(slotsFor(blocks))),
              R"(4 bytes of "View Points" belong to no record, from byte 0)");
}

// --- Links and datasets

TEST(Verify, ALinkToAVariableThatDoesNotExistIsRefused)
{
    std::string const place = R"(node 3: variable 2: "Coordinates\x1Et2": link to variable )";
    auto const verdictOnLink = [](std::uint32_t node, std::uint32_t index) {
        return verdictAfter([=](Sample& sample) {
            sample.variables[2].linkNode = node;
            sample.variables[2].linkIndex = index;
        });
    };
    EXPECT_EQ(verdictOnLink(3, 3), place + "3 of node 3, which does not exist");
    EXPECT_EQ(verdictOnLink(5, 0), place + "0 of node 5, which does not exist");
    EXPECT_EQ(verdictOnLink(0, 0), place + "0 of node 0, which does not exist");
    EXPECT_EQ(verdictOnLink(1, 0), place + "0 of node 1, which does not exist");
    EXPECT_EQ(verdictOnLink(4294967295U, 4294967295U),
              place + "4294967295 of node 4294967295, which does not exist");
}

TEST(Verify, ADatasetBeyondTheHeavyDataIsRefused)
{
    EXPECT_EQ(verdictAfter([](Sample& sample) { sample.variables[1].position = 25; }),
              R"(node 3: variable 1: "Ids": its 8 bytes at 25 are not within one block of the 32 )"
              "bytes of \"Heavy Data\"");
    EXPECT_EQ(
        verdictAfter([](Sample& sample) { sample.variables[1].position = ~0ULL; }),
        R"(node 3: variable 1: "Ids": its 8 bytes at 18446744073709551615 are not within one )"
        "block of the 32 bytes of \"Heavy Data\"");
}

TEST(Verify, ADatasetThatReachesIntoTheNextBlockIsRefused)
{
    Sample const sample;
    std::vector<TestBlock> blocks = sample.blocks();
    blocks[heavy].block = deflated(sample.heavy().substr(0, 28));
    blocks.push_back({"Heavy Data", 1, deflated(sample.heavy().substr(28))});
    EXPECT_EQ(verdictOn(assemble(slotsFor(blocks))),
              R"(node 3: variable 1: "Ids": its 8 bytes at 24 are not within one block of the 32 )"
              "bytes of \"Heavy Data\"");
}

TEST(Verify, ADatasetInTheSecondHeavyBlockIsAccepted)
{
    Sample const sample;
    std::vector<TestBlock> blocks = sample.blocks();
    blocks[heavy].block = deflated(sample.heavy().substr(0, 24));
    blocks.push_back({"Heavy Data", 1, deflated(sample.heavy().substr(24))});
    EXPECT_EQ(verdictOn(assemble(slotsFor(blocks))), "ok");
}

TEST(Verify, ADamagedHeavyBlockWithoutDatasetsIsRefused)
{
    std::vector<TestBlock> blocks = Sample().blocks();
    std::string block = deflated("nobody's");
    block.back() = static_cast<char>(block.back() ^ 1);
    blocks.push_back({"Heavy Data", 1, block});
    std::string const verdict = verdictOn(assemble(slotsFor(blocks)));
    EXPECT_NE(verdict.find("the zlib stream is damaged"), std::string::npos) << verdict;
}

struct EndOfStream
{
    Stream stream;
    std::string tail;
    std::string verdict;
};

TEST(Verify, BytesAfterTheLastRecordOfAStreamAreRefused)
{
    for (EndOfStream const& given :
         {EndOfStream{tree, "xy", R"(2 bytes of "Mox Tree" belong to no record, from byte 231)"},
          EndOfStream{light, "x", R"(1 bytes of "Light Data" belong to no record, from byte 200)"},
          EndOfStream{attributes, "xyz",
                      R"(3 bytes of "Attributes" belong to no record, from byte 178)"},
          EndOfStream{global, "x",
                      R"(1 bytes of "Global Information" belong to no record, from byte 90)"}})
        EXPECT_EQ(verdictWithTail(given.stream, given.tail), given.verdict);
}

TEST(Verify, AStreamThatEndsBeforeItsLastRecordDoesIsRefused)
{
    for (EndOfStream const& given :
         {EndOfStream{tree, "",
                      R"(node 4: byte 223 of "Mox Tree": 8 bytes are needed, 7 are left)"},
          EndOfStream{light, "",
                      R"(node 4: byte 199 of "Light Data": 1 bytes are needed, 0 are left)"},
          EndOfStream{attributes, "",
                      R"(node 4: byte 174 of "Attributes": 4 bytes are needed, 3 are left)"},
          EndOfStream{resources, "",
                      R"(node 2: byte 83 of "Resources": 1 bytes are needed, 0 are left)"}})
        EXPECT_EQ(verdictWithoutLastByte(given.stream), given.verdict);
}

// --- One wrong value in the records, or in the index

namespace {

template <typename ChangedT>
struct Damage
{
    char const* name;
    void (*change)(ChangedT&);
    char const* verdict;
};

using RecordDamage = Damage<Sample>;
using SlotDamage = Damage<std::vector<TestSlot>>;

class WrongRecordTest : public testing::TestWithParam<RecordDamage>
{};

class WrongSlotTest : public testing::TestWithParam<SlotDamage>
{};

template <typename DamageT>
std::string nameOf(testing::TestParamInfo<DamageT> const& info)
{
    return info.param.name;
}

std::vector<RecordDamage> const wrongRecords{
    {"AcceptsALinkToALink",
     [](Sample& sample) {
         sample.variables[1].linked = 1;
         sample.variables[1].linkNode = 3;
         sample.variables[1].linkIndex = 2;
         sample.nodes[3].lightPosition -= 16;
     },
     "ok"},
    {"AcceptsTwoDatasetsThatAreTheSameBytes",
     [](Sample& sample) {
         sample.variables[2] = sample.variables[0];
         sample.variables[2].name = "again";
         sample.nodes[3].lightPosition += 45 - 32 - 6;
     },
     "ok"},
    {"ANodeCountOfZero", [](Sample& sample) { sample.nodes.clear(); },
     R"(byte 0 of "Mox Tree": node count is 0)"},
    {"NodeIdsWithAGap", [](Sample& sample) { sample.nodes[1].id = 3; },
     R"(node 2: byte 60 of "Mox Tree": id is 3, not 2)"},
    {"ARootWithAParent", [](Sample& sample) { sample.nodes[0].parent = 1; },
     "node 1: parent of the root is 1, not 0"},
    {"AWrongPreviousSibling", [](Sample& sample) { sample.nodes[3].previous = 3; },
     "node 4: previous sibling is 3, not 2"},
    {"AWrongFirstChild", [](Sample& sample) { sample.nodes[0].first = 4; },
     "node 1: first child is 4, not 2"},
    {"AWrongLastChild", [](Sample& sample) { sample.nodes[3].last = 9; },
     "node 4: last child is 9, not 0"},
    {"AnUnknownType", [](Sample& sample) { sample.nodes[3].type = "Node"; },
     R"(node 4: type "Node" of version "0.4" is unknown)"},
    {"AnUnknownVersionOfAType", [](Sample& sample) { sample.nodes[2].version = "0.6"; },
     R"(node 3: type "Geometry" of version "0.6" is unknown)"},
    {"ANameOfANodeWithoutType",
     [](Sample& sample) {
         sample.nodes[3].type = "";
         sample.nodes[3].version = "";
     },
     R"(node 4: a node without type has the name "rest")"},
    {"ANodeWithoutTypeBelowTheRoot",
     [](Sample& sample) {
         sample.nodes[3].type = sample.nodes[3].version = sample.nodes[3].name = "";
         sample.attributes.pop_back();
         sample.hasRest = false;
     },
     "node 4: a node that is not alone has no type"},
    {"AGeometryWithAnotherNameThanItsShape", [](Sample& sample) { sample.nodes[2].name = "Part"; },
     R"(node 3: the name of the geometry is "Part", not "part" as that of its shape)"},
    {"AGeometryThatIsNotOfAShape",
     [](Sample& sample) {
         sample.nodes[2].parent = 1;
         sample.nodes[2].previous = 2;
         sample.nodes[2].next = 4;
         sample.nodes[1].first = sample.nodes[1].last = 0;
         sample.nodes[1].next = 3;
         sample.nodes[3].previous = 3;
     },
     "node 3: the parent of a geometry is no shape below the root"},
    {"ASecondGeometryOfAShape",
     [](Sample& sample) {
         sample.nodes[0].last = sample.nodes[2].parent;
         sample.nodes[1].next = 0;
         sample.nodes[1].last = sample.nodes[2].next = 4;
         sample.nodes[3] = sample.nodes[2];
         sample.nodes[3].id = 4;
         sample.nodes[3].previous = 3;
         sample.nodes[3].next = 0;
         sample.nodes[3].lightPosition = 159;
         sample.attributes.pop_back();
     },
     "node 4: its shape has another geometry before"},
    {"AFlagOfAGroupBelowTheRoot", [](Sample& sample) { sample.rest.flag = 1; },
     "node 4: the flag of a group below the root is 1"},
    {"AWrongLightPosition", [](Sample& sample) { sample.nodes[2].lightPosition = 42; },
     R"(node 3: byte 167 of "Mox Tree": light position is 42, not 41)"},
    {"AGroupFlagOtherThanZeroOrOne", [](Sample& sample) { sample.root.flag = 2; },
     R"(node 1: byte 40 of "Light Data" is 2, not a flag (0 or 1))"},
    {"AnUnknownElementCode", [](Sample& sample) { sample.variables[1].elementCode = 2; },
     R"(node 3: variable 1: "Ids": byte 97 of "Light Data": element code is 2, not 1 or 5)"},
    {"ALinkFlagOtherThanZeroOrOne", [](Sample& sample) { sample.variables[2].linked = 3; },
     R"(node 3: variable 2: "Coordinates\x1Et2": byte 149 of "Light Data" is 3, not a flag )"
     "(0 or 1)"},
    {"AWidthThatTheVariableTypeDoesNotHave", [](Sample& sample) { sample.variables[0].width = 2; },
     R"(node 3: variable 0: "Coordinates": byte 65 of "Light Data": width is 2, not 3 as )"
     "variable type 1 has it"},
    {"AValueCountThatIsNoWholeNumberOfRows", [](Sample& sample) { sample.variables[0].count = 5; },
     R"(node 3: variable 0: "Coordinates": byte 65 of "Light Data": value count 5 is not a )"
     "whole number of rows of width 3"},
    {"ANegativeValueCount", [](Sample& sample) { sample.variables[1].count = 0x80000000; },
     R"(node 3: variable 1: "Ids": byte 102 of "Light Data": value count 2147483648 is not )"
     "a whole number of rows of width 1"},
    {"AVibrationFlagOtherThanZeroOrOne", [](Sample& sample) { sample.variables[1].vibration = 2; },
     R"(node 3: variable 1: "Ids": byte 126 of "Light Data" is 2, not a flag (0 or 1))"},
    {"TwoVariablesOfOneName", [](Sample& sample) { sample.variables[1].name = "Coordinates"; },
     R"(node 3: variable 1: there is another variable "Coordinates" before)"},
    {"AttributeNamesAreOrderedByUnsignedBytes",
     [](Sample& sample) { sample.attributes[0].names[3] = "\xC3"; }, "ok"},
    {"ATypeTagAboveThree", [](Sample& sample) { sample.attributes[0].tags[1] = 4; },
     R"(node 1: byte 29 of "Attributes": attribute type tag 4 is not 0 to 3)"},
    {"ACountOfTypeTagsThatDiffersFromTheNames",
     [](Sample& sample) { sample.attributes[0].tags.push_back(0); },
     R"(node 1: byte 24 of "Attributes": count of the attribute type tags is 5, not 4)"},
    {"AnErrorInTheAttributesOfAVariableNamesTheVariable",
     [](Sample& sample) { sample.attributes[2].floats.push_back(1); },
     R"(node 3: variable 1: "Ids": byte 118 of "Attributes": count of the float attributes )"
     "is 1, not 0"},
    {"AWrongMaterialRecordSize", [](Sample& sample) { sample.material.size = 85; },
     R"(node 2: byte 0 of "Resources": record size is 85, not 84)"},
    {"AnotherMaterialVersion", [](Sample& sample) { sample.material.version = "0.2"; },
     R"(node 2: byte 4 of "Resources": record version is "0.2", not "0.3")"},
    {"AMaterialFlagOtherThanZeroOrOne", [](Sample& sample) { sample.material.flag = 9; },
     R"(node 2: byte 83 of "Resources" is 9, not a flag (0 or 1))"},
    {"AMaterialFlagOfZero", [](Sample& sample) { sample.material.flag = 0; },
     R"(node 2: byte 83 of "Resources": the flag of a material is 0, not 1)"},
    {"AWrongWritingRecordSize", [](Sample& sample) { sample.writing.size = 0; },
     R"(writing record 1: byte 4 of "Global Information": record size is 0, not 82)"},
    {"AnotherWritingRecordVersion", [](Sample& sample) { sample.writing.version = "0.9"; },
     R"(writing record 1: byte 8 of "Global Information": record version is "0.9", not )"
     "\"0.1\""},
    {"AnotherFormatVersion", [](Sample& sample) { sample.writing.formatVersion = "1.4"; },
     R"(writing record 1: byte 29 of "Global Information": format version is "1.4", not )"
     "\"1.3\""},
    {"AttributesOfALinkedVariable",
     [](Sample& sample) { sample.attributes[3] = {{"t"}, {1}, {}, {0.5F}, {}, {}}; },
     R"(node 3: variable 2: "Coordinates\x1Et2": it is linked and has attributes)"},
    {"ALinkToItself", [](Sample& sample) { sample.variables[2].linkIndex = 2; },
     R"(node 3: variable 2: "Coordinates\x1Et2": its links run in a circle)"},
    {"LinksThatRunInACircle",
     [](Sample& sample) {
         sample.variables[0].linked = 1;
         sample.variables[0].linkNode = 3;
         sample.variables[0].linkIndex = 2;
         sample.nodes[3].lightPosition -= 16;
     },
     R"(node 3: variable 0: "Coordinates": its links run in a circle)"},
    {"DatasetsThatOverlap", [](Sample& sample) { sample.variables[1].position = 20; },
     R"(node 3: variable 1: "Ids": its values overlap those of node 3: variable 0: )"
     "\"Coordinates\""},
};

std::vector<SlotDamage> const wrongSlots{
    {"AcceptsBlocksThatWereWrittenEarly",
     [](std::vector<TestSlot>& slots) { slots[0].transformations = 33; }, "ok"},
    {"AWrongId", [](std::vector<TestSlot>& slots) { slots[3].id = 5; },
     "slot 3: id at byte 437 is 5, not 4"},
    {"AWrongNameFieldWidth", [](std::vector<TestSlot>& slots) { slots[3].nameWidth = 127; },
     "slot 3: name field width at byte 438 is 127, not 128"},
    {"BytesAfterTheEndOfAName",
     [](std::vector<TestSlot>& slots) { slots[3].name = std::string("Attributes\0\0x", 13); },
     "slot 3: byte 454 of the name field is not zero although the name ended before"},
    {"AReservedByteOtherThanZero", [](std::vector<TestSlot>& slots) { slots[3].reserved = 1; },
     "slot 3: reserved byte at byte 575 is 1, not 0"},
    {"ASpareSlotWithASize",
     [](std::vector<TestSlot>& slots) {
         slots[6].size = 4;
         slots[6].block = "1234";
     },
     "slot 6: a spare slot has size 4"},
    {"ASpareSlotWithTransformations",
     [](std::vector<TestSlot>& slots) { slots[6].transformations = 32; },
     "slot 6: a spare slot has transformations 32"},
    {"AnIndexBlockBeforeTheEndOfItsGroup",
     [](std::vector<TestSlot>& slots) {
         slots[0].name = indexName;
         slots[0].transformations = 32;
         slots[0].size = 27804;
         slots[0].block = std::string(27804, '\0');
     },
     R"(slot 0 "\x0BIndex Block " at byte 2800: an index block is not the last slot of its )"
     "group"},
};

} // namespace

TEST_P(WrongRecordTest, IsNamedByTheVerdict)
{
    EXPECT_EQ(verdictAfter(GetParam().change), GetParam().verdict);
}

INSTANTIATE_TEST_SUITE_P(Verify, WrongRecordTest, testing::ValuesIn(wrongRecords),
                         nameOf<RecordDamage>);

TEST_P(WrongSlotTest, IsNamedByTheVerdict)
{
    EXPECT_EQ(verdictAfterSlots(GetParam().change), GetParam().verdict);
}

INSTANTIATE_TEST_SUITE_P(Verify, WrongSlotTest, testing::ValuesIn(wrongSlots), nameOf<SlotDamage>);
