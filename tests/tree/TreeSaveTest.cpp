#include "HostIdentity.h"
#include "SavedFile.h"
#include "Zyl2/Mox/NodeSets.h"
#include "Zyl2/Mox/Tree.h"
#include "container/Bytes.h"
#include "container/LogCapture.h"
#include "support/Encoding.h"
#include "support/Environment.h"
#include "support/KeyContent.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Support::Count;
using Support::Hex;
using Support::HostIdentity;
using Support::LogCapture;
using Support::LongWord;
using Support::NoAttributes;
using Support::OneByte;
using Support::Text;
using Support::Zeros;
using Zyl2::Exception::FileWriteException;
using Zyl2::Exception::KeyNotFound;
using Zyl2Mox::ElementCode;
using Zyl2Mox::Geometry;
using Zyl2Mox::NodeSets;
using Zyl2Mox::NumericArray;
using Zyl2Mox::Tree;
using Zyl2Util::AttributeValue;

/// Counts how often it is closed.
class CountingFile : public Zyl2Wvf::WvFile
{
public:
    void CloseFile() override
    {
        ++closes;
        WvFile::CloseFile();
    }

    int closes = 0;
};

/// Six ids of a record.
std::string SixIds(std::uint32_t id, std::uint32_t parent, std::uint32_t previous,
                   std::uint32_t next, std::uint32_t first, std::uint32_t last)
{
    return Count(id) + Count(parent) + Count(previous) + Count(next) + Count(first) + Count(last);
}

std::string DefaultGroupPayload()
{
    return Zeros(12) + Hex("00 00 00 00 00 00 00 00 00 00 80 3F 00 00 00 00 ") +
           Hex("00 00 80 3F 00 00 80 3F 00 00 80 3F ") + OneByte(0);
}

/// Size, version, and the texts of one writing.
std::string Record(std::string const& text1, std::string const& text2, std::string const& stamp,
                   std::string const& text)
{
    std::string const fields = Text("0.1") + Text(text1) + Text(text2) + Text("1.3") + Text(stamp) +
                               Text("host") + Text("me") + Text(text);
    return Count(static_cast<std::uint32_t>(4 + fields.size())) + fields;
}

class TreeSave : public testing::Test
{
protected:
    TreeSave() { tree.SetFormatVersion("1.3"); }

    Zyl2Wvf::Index& Index() { return tree.GetFile().GetIndex(); }
    std::string Content(std::string const& key) { return Support::KeyContent(Index(), key); }
    bool IsUntouched(std::string const& key) { return Support::KeySlots(Index(), key).empty(); }
    void Save() { tree.SaveTree(tree.GetFile()); }
    void SaveGlobalInfo(std::string const& text) { tree.SaveGlobalInfo(tree.GetFile(), text); }
    void FlushAndClose() { tree.FlushAndClose(tree.GetFile(), ""); }

    void Open(std::string const& path)
    {
        tree.GetFile().OpenFileForWriting(path, true);
        tree.GetFile().WriteHeader();
    }

    std::string Stamp(std::size_t writing)
    {
        return tree.GetModifierInfos().at(writing).GetTimeStamp();
    }

    HostIdentity identity{"host", "me"};
    Support::TemporaryFolder folder;
    Tree tree;
};

using TreeGlobalInfo = TreeSave;
using TreeFlushAndClose = TreeSave;

TEST_F(TreeSave, ARootGroupAloneIsOneRecordAndATransform)
{
    tree.SetRootGroup("root", {});
    Save();
    EXPECT_EQ(Content("Mox Tree"), Hex("01 00 00 00 "
                                       "01 00 00 00 00 00 00 00 00 00 00 00 "
                                       "00 00 00 00 00 00 00 00 00 00 00 00 "
                                       "04 00 00 00 72 6F 6F 74 "
                                       "05 00 00 00 47 72 6F 75 70 "
                                       "03 00 00 00 30 2E 34 "
                                       "00 00 00 00 00 00 00 00 "));
    EXPECT_EQ(Content("Light Data"), Hex("00 00 00 00 00 00 00 00 00 00 00 00 "
                                         "00 00 00 00 00 00 00 00 00 00 80 3F 00 00 00 00 "
                                         "00 00 80 3F 00 00 80 3F 00 00 80 3F "
                                         "00 "));
    EXPECT_EQ(Content("Attributes"), Zeros(24));
    for (char const* key : {"Heavy Data", "Resources", "Global Information", "View Points"})
        EXPECT_TRUE(IsUntouched(key)) << key;
}

TEST_F(TreeSave, ARecordWithoutNodeIsThreeEmptyTextsAndItsPosition)
{
    Save();
    EXPECT_EQ(Content("Mox Tree"), Count(1) + SixIds(1, 0, 0, 0, 0, 0) + Zeros(12) + LongWord(0));
    for (char const* key : {"Light Data", "Attributes", "Heavy Data", "Resources"})
        EXPECT_TRUE(IsUntouched(key)) << key;
}

TEST_F(TreeSave, ARootShapeAloneIsOneRecordWithoutGeometry)
{
    tree.SetRootShape("s");
    Save();
    EXPECT_EQ(Content("Mox Tree"), Count(1) + SixIds(1, 0, 0, 0, 0, 0) + Text("s") + Text("Shape") +
                                       Text("0.2") + LongWord(0));
    EXPECT_EQ(Content("Resources").size(), 84U);
    for (char const* key : {"Light Data", "Attributes", "Heavy Data"})
        EXPECT_TRUE(IsUntouched(key)) << key;
}

TEST_F(TreeSave, ARootShapeThatWasGivenAGeometryYieldsTwoRecordsAndOneMaterial)
{
    tree.SetRootShape("s");
    tree.AddNode(std::make_unique<Geometry>("s"));
    Save();
    EXPECT_EQ(Content("Mox Tree"), Count(2) + SixIds(1, 0, 0, 0, 2, 2) + Text("s") + Text("Shape") +
                                       Text("0.2") + LongWord(0) + SixIds(2, 1, 0, 0, 0, 0) +
                                       Text("s") + Text("Geometry") + Text("0.7") + LongWord(0));
    EXPECT_EQ(Content("Light Data"), Zeros(4));
    EXPECT_EQ(Content("Resources"), Hex("54 00 00 00 03 00 00 00 30 2E 33 "
                                        "CD CC 4C 3F CD CC 4C 3F CD CC 4C 3F 00 00 80 3F "
                                        "00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 3F "
                                        "00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 3F "
                                        "0B D7 23 3E 0B D7 23 3E 0B D7 23 3E CD CC 4C 3E "
                                        "00 00 00 00 CD CC 4C 3E 01 "));
}

/// A tree of every kind of node:
///
///     1 group "r"
///         2 group "g"
///         3 shape "s"
///             4 geometry "s": "u" with data, "v" linked to it
///         5 node sets "n"
///         6 without node
class TreeOfEveryKind : public TreeSave
{
protected:
    TreeOfEveryKind()
    {
        tree.SetRootGroup("r", {{"a", AttributeValue::FromInteger(7)}});
        tree.MoveToOrAddGroup("g");
        tree.SetCurrentId(1);
        tree.MoveToOrAddShape("s");
        tree.SetCurrentId(1);
        auto nodeSets = std::make_unique<NodeSets>("n");
        nodeSets->GetEntries().resize(2);
        nodeSets->GetEntries()[0].fill('n');
        nodeSets->SetValues(8, 9);
        tree.AddNode(std::move(nodeSets));
        tree.SetCurrentId(1);
        tree.AddChild();
        AddVariables();
    }

    void AddVariables()
    {
        std::vector<unsigned int> const values{0x03020100, 0x07060504};
        std::uint64_t const position = tree.WriteStreamDataset(values.data(), 2, 1);
        NumericArray const array(values.data(), 8, 1, ElementCode::UnsignedInt);
        auto const type = static_cast<Geometry::VariableType>(12);
        tree.SetAndGetIndex(4, "u", type, position, array,
                            {{"Category", AttributeValue::FromText("Vibration")}});
        tree.SetAndGetIndex(4, "v", type, position, array, {{"b", AttributeValue::FromInteger(1)}});
        tree.SetLink({4, 1}, {4, 0});
    }
};

TEST_F(TreeOfEveryKind, EveryRecordTellsItsRelativesAndWhereItsPayloadBegins)
{
    Save();
    EXPECT_EQ(Content("Mox Tree"),
              Count(6) + SixIds(1, 0, 0, 0, 2, 6) + Text("r") + Text("Group") + Text("0.4") +
                  LongWord(0) + SixIds(2, 1, 0, 3, 0, 0) + Text("g") + Text("Group") + Text("0.4") +
                  LongWord(41) + SixIds(3, 1, 2, 5, 4, 4) + Text("s") + Text("Shape") +
                  Text("0.2") + LongWord(82) + SixIds(4, 3, 0, 0, 0, 0) + Text("s") +
                  Text("Geometry") + Text("0.7") + LongWord(82) + SixIds(5, 1, 3, 6, 0, 0) +
                  Text("n") + Text("NodeSets") + Text("0.1") + LongWord(140) +
                  SixIds(6, 1, 5, 0, 0, 0) + Zeros(12) + LongWord(160));
}

TEST_F(TreeOfEveryKind, LightDataHoldsTransformsHeadersAndNodeSets)
{
    Save();
    EXPECT_EQ(Content("Light Data"),
              DefaultGroupPayload() + DefaultGroupPayload() +
                  Hex("02 00 00 00 "
                      "01 00 00 00 75 0C 00 00 05 00 02 00 00 00 01 00 00 "
                      "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 "
                      "01 00 00 00 76 0C 00 00 05 01 04 00 00 00 00 00 00 00 00 "
                      "10 00 00 00 02 00 00 00 08 00 00 00 00 00 00 00 09 00 00 00 "));
}

TEST_F(TreeOfEveryKind, HeavyDataHoldsTheDatasetAndTheNodeSets)
{
    Save();
    EXPECT_EQ(Content("Heavy Data"),
              Hex("00 04 01 05 02 06 03 07 ") + std::string(32, 'n') + Zeros(32));
}

TEST_F(TreeOfEveryKind, AttributesHoldTheListsOfGroupsAndVariables)
{
    Save();
    std::string const ofRoot =
        Count(1) + Text("a") + Count(1) + OneByte(0) + Count(1) + Count(7) + Zeros(12);
    std::string const ofVariable = Count(1) + Text("Category") + Count(1) + OneByte(2) + Zeros(12) +
                                   Count(1) + Text("Vibration");
    EXPECT_EQ(Content("Attributes"), ofRoot + NoAttributes() + ofVariable + NoAttributes());
}

TEST_F(TreeSave, EveryFieldOfARecordIsAWriteOfItsOwn)
{
    Support::DefaultBlockSizeSetting const setting("1");
    tree.SetRootGroup("r", {});
    Save();
    std::vector<std::size_t> sizes;
    for (std::size_t const slot : Support::KeySlots(Index(), "Mox Tree"))
        sizes.push_back(Support::SlotContent(Index(), slot).size());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{4, 4, 4, 4, 4, 4, 4, 5, 9, 7, 8}));
}

TEST_F(TreeSave, PositionsGoOnOverTheBlocksOfLightData)
{
    Support::DefaultBlockSizeSetting const setting("20");
    tree.SetRootGroup("r", {});
    tree.MoveToOrAddGroup("g");
    Save();
    std::string const content = Content("Mox Tree");
    EXPECT_EQ(content.substr(content.size() - 8), LongWord(41));
    EXPECT_GT(Support::KeySlots(Index(), "Light Data").size(), 1U);
}

void ExpectStory(LogCapture const& log, std::vector<std::string> const& texts,
                 std::vector<unsigned long> const& lines, std::string const& function)
{
    ASSERT_EQ(log.Texts(), texts);
    for (std::size_t entry = 0; entry < texts.size(); ++entry) {
        EXPECT_EQ(log.entries[entry].line, lines[entry]);
        EXPECT_EQ(log.entries[entry].file, "Zyl2/Mox/Tree");
        EXPECT_EQ(log.entries[entry].severity, 1);
        EXPECT_NE(log.entries[entry].function.find(function), std::string::npos);
    }
}

TEST_F(TreeSave, TreeAndGlobalInformationTellWhenTheyBeginAndEnd)
{
    tree.SetRootGroup("r", {});
    LogCapture log;
    Save();
    ExpectStory(log, {"Saving mox tree ... ", "Mox tree saved. "}, {2214, 2289},
                "Zyl2Mox::Tree::SaveTree");
    log.entries.clear();
    SaveGlobalInfo("");
    ExpectStory(log, {"Saving global information ...", "Global information saved."}, {2642, 2652},
                "Zyl2Mox::Tree::SaveGlobalInfo");
}

TEST_F(TreeGlobalInfo, HoldsTheWritingRecordsAndTheResultAttributes)
{
    tree.GetScratchModifierInfo().SetTexts("one", "two");
    tree.GetResultAttributes().resize(1);
    tree.GetResultAttributes()[0].bytes.fill('r');
    SaveGlobalInfo("end");
    EXPECT_EQ(Content("Global Information"),
              Count(1) + Record("one", "two", Stamp(0), "end") + Count(1) + std::string(96, 'r'));
}

TEST_F(TreeGlobalInfo, SavingTwiceWritesTwoRecordsTheSecondTime)
{
    tree.GetScratchModifierInfo().SetTexts("one", "two");
    SaveGlobalInfo("first");
    SaveGlobalInfo("second");
    std::string const first = Record("one", "two", Stamp(0), "first");
    std::string const second = Record("one", "two", Stamp(1), "second");
    EXPECT_EQ(Content("Global Information"),
              Count(1) + first + Count(0) + Count(2) + first + second + Count(0));
    EXPECT_EQ(tree.GetModifierInfos().size(), 2U);
}

TEST_F(TreeGlobalInfo, EachListIsAWriteOfItsOwn)
{
    Support::DefaultBlockSizeSetting const setting("1");
    SaveGlobalInfo("");
    auto const slots = Support::KeySlots(Index(), "Global Information");
    ASSERT_EQ(slots.size(), 2U);
    EXPECT_EQ(Support::SlotContent(Index(), slots[0]), Count(1) + Record("", "", Stamp(0), ""));
    EXPECT_EQ(Support::SlotContent(Index(), slots[1]), Count(0));
}

TEST_F(TreeFlushAndClose, WithoutAStreamNothingHappens)
{
    tree.SetRootGroup("r", {});
    LogCapture const log;
    FlushAndClose();
    EXPECT_TRUE(log.entries.empty());
    EXPECT_EQ(Index().GetSlots().GetSlotCount(), 0U);
    EXPECT_TRUE(tree.GetModifierInfos().empty());
}

TEST_F(TreeFlushAndClose, WritesTheBlocksOfTheModelCompressed)
{
    std::string const path = folder.File("a.mox");
    tree.GetScratchModifierInfo().SetTexts("one", "two");
    tree.SetRootGroup("r", {});
    tree.MoveToOrAddShape("s");
    std::vector<float> const values{1, 2, 3};
    tree.WriteStreamDataset(values.data(), 1, 3);
    Open(path);
    FlushAndClose();
    EXPECT_EQ(tree.GetFile().GetStream(), nullptr);

    std::string const bytes = Support::ReadFile(path);
    EXPECT_EQ(bytes.substr(0, 12), Hex("89 57 56 46 0D 0A 1A 0A 31 2E 33 00 "));
    Support::SavedFile const saved(path);
    for (char const* key : {"Heavy Data", "Mox Tree", "Light Data", "Attributes", "Resources",
                            "Global Information"}) {
        std::vector<Support::ReadSlot> const slots = saved.Slots(key);
        ASSERT_EQ(slots.size(), 1U) << key;
        EXPECT_EQ(slots[0].transformations, 1U) << key;
    }
    EXPECT_TRUE(saved.Slots("View Points").empty());
    EXPECT_EQ(saved.Content("Mox Tree"),
              Count(3) + SixIds(1, 0, 0, 0, 2, 2) + Text("r") + Text("Group") + Text("0.4") +
                  LongWord(0) + SixIds(2, 1, 0, 0, 3, 3) + Text("s") + Text("Shape") + Text("0.2") +
                  LongWord(41) + SixIds(3, 2, 0, 0, 0, 0) + Text("s") + Text("Geometry") +
                  Text("0.7") + LongWord(41));
    EXPECT_EQ(saved.Content("Light Data"), DefaultGroupPayload() + Count(0));
    EXPECT_EQ(saved.Content("Attributes"), NoAttributes());
    EXPECT_EQ(saved.Content("Heavy Data"), Hex("00 00 80 3F 00 00 00 40 00 00 40 40 "));
    EXPECT_EQ(saved.Content("Global Information"),
              Count(1) + Record("one", "two", Stamp(0), "") + Count(0));
}

TEST_F(TreeFlushAndClose, BlocksStandInTheOrderOfTheirFirstUse)
{
    std::string const path = folder.File("a.mox");
    tree.SetRootGroup("r", {});
    tree.MoveToOrAddShape("s");
    Open(path);
    FlushAndClose();
    std::vector<std::string> names;
    for (Support::ReadSlot const& slot : Support::ReadSlots(Support::ReadFile(path)))
        if (slot.size != 0)
            names.push_back(slot.name);
    EXPECT_EQ(names, (std::vector<std::string>{"Mox Tree", "Light Data", "Attributes", "Resources",
                                               "Global Information"}));
}

TEST_F(TreeFlushAndClose, ContentOfViewPointsIsMarkedForCompressionToo)
{
    std::string const path = folder.File("a.mox");
    Open(path);
    Index().Put<std::string>("View Points", "v");
    FlushAndClose();
    std::vector<Support::ReadSlot> const slots = Support::SavedFile(path).Slots("View Points");
    ASSERT_EQ(slots.size(), 1U);
    EXPECT_EQ(slots[0].transformations, 1U);
    EXPECT_EQ(Plain(slots[0]), Text("v"));
}

TEST_F(TreeFlushAndClose, TellsItsStoryInOrder)
{
    tree.SetRootGroup("r", {});
    Open(folder.File("a.mox"));
    LogCapture log;
    FlushAndClose();
    std::vector<std::string> texts;
    for (std::string const& text : log.Texts())
        if (text.rfind("Writing buffer", 0) != 0 && text.rfind("Buffer ", 0) != 0)
            texts.push_back(text);
    EXPECT_EQ(texts,
              (std::vector<std::string>{
                  "Saving mox tree ... ", "Mox tree saved. ", "Saving global information ...",
                  "Global information saved.", "Writing all buffers to file stream ...",
                  "All buffers to file stream written.", "Closing file ...", "File closed."}));
}

TEST_F(TreeFlushAndClose, ASecondCallFindsNoStreamAndEndsQuietly)
{
    std::string const path = folder.File("a.mox");
    tree.SetRootGroup("r", {});
    Open(path);
    FlushAndClose();
    std::string const bytes = Support::ReadFile(path);
    LogCapture const log;
    FlushAndClose();
    EXPECT_TRUE(log.entries.empty());
    EXPECT_EQ(tree.GetModifierInfos().size(), 1U);
    EXPECT_EQ(Support::ReadFile(path), bytes);
}

TEST_F(TreeFlushAndClose, TheFileIsClosedByItsOwnCloseOperation)
{
    CountingFile file;
    tree.FlushAndClose(file, "");
    EXPECT_EQ(file.closes, 0);
    file.OpenFileForWriting(folder.File("a.mox"), false);
    file.WriteHeader();
    tree.FlushAndClose(file, "");
    EXPECT_EQ(file.closes, 1);
    EXPECT_EQ(file.GetStream(), nullptr);
}

TEST_F(TreeFlushAndClose, TheTextEndsTheWritingRecord)
{
    std::string const path = folder.File("a.mox");
    Open(path);
    tree.FlushAndClose(tree.GetFile(), "why");
    EXPECT_EQ(Support::SavedFile(path).Content("Global Information"),
              Count(1) + Record("", "", Stamp(0), "why") + Count(0));
}

TEST_F(TreeFlushAndClose, OnAFullDiskTheFileIsClosedBeforeTheExceptionGoesOn)
{
    tree.SetRootGroup("r", {});
    tree.GetFile().OpenFileForWriting("/dev/full", true);
    std::setvbuf(tree.GetFile().GetStream(), nullptr, _IONBF, 0);
    tree.GetFile().WriteHeader();
    LogCapture log;
    Support::expectThrown<FileWriteException>(
        [&] { FlushAndClose(); },
        {7, "Unable to write to file", "Zyl2Wvf::Block::Write", "Zyl2/Wvf/Block"});
    EXPECT_EQ(tree.GetFile().GetStream(), nullptr);
    EXPECT_EQ(log.entries.back().text, "File closed.");
    EXPECT_EQ(tree.GetNodeCount(), 1U);
    log.entries.clear();
    FlushAndClose();
    EXPECT_TRUE(log.entries.empty());
}

TEST_F(TreeFlushAndClose, ATreeThatCantBeSavedClosesTheFileToo)
{
    tree.MoveToOrAddShape("s");
    dynamic_cast<Geometry&>(*tree.GetCurrentNode().value).FindOrAddVariable("u");
    CountingFile file;
    file.OpenFileForWriting(folder.File("a.mox"), false);
    EXPECT_THROW(tree.FlushAndClose(file, ""), KeyNotFound);
    EXPECT_EQ(file.closes, 1);
    EXPECT_EQ(file.GetStream(), nullptr);
    EXPECT_NO_THROW(tree.FlushAndClose(file, ""));
    EXPECT_EQ(file.closes, 1);
}

} // namespace
