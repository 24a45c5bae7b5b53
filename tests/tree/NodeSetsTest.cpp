#include "Zyl2/Mox/NodeSets.h"

#include "support/KeyContent.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Support::KeyContent;
using Zyl2Mox::NodeSets;
using Zyl2Wvf::WvFile;

NodeSets::Entry Filled(std::uint8_t byte)
{
    NodeSets::Entry entry{};
    entry.fill(byte);
    return entry;
}

TEST(NodeSets, SaysWhatItIs)
{
    NodeSets const nodeSets("sets");
    EXPECT_EQ(nodeSets.GetName(), "sets");
    EXPECT_EQ(nodeSets.GetType(), "NodeSets");
    EXPECT_TRUE(nodeSets.GetEntries().empty());
    EXPECT_EQ(nodeSets.GetWideValue(), 0U);
    EXPECT_EQ(nodeSets.GetNarrowValue(), 0U);
}

TEST(NodeSets, KeepsItsTwoValues)
{
    NodeSets nodeSets("sets");
    nodeSets.SetValues(1234567890123U, 42);
    EXPECT_EQ(nodeSets.GetWideValue(), 1234567890123U);
    EXPECT_EQ(nodeSets.GetNarrowValue(), 42U);
}

TEST(NodeSets, EntriesAre32BytesEachInTheHeavyBlock)
{
    WvFile file;
    NodeSets nodeSets("sets");
    nodeSets.GetEntries() = {Filled('a'), Filled('b')};
    nodeSets.SaveDataBlocks(file, "Heavy Data", false);
    EXPECT_EQ(KeyContent(file.GetIndex(), "Heavy Data"),
              std::string(32, 'a') + std::string(32, 'b'));
    EXPECT_EQ(file.GetIndex().GetSlots().GetItem(0).transformations, 0U);
}

TEST(NodeSets, WithoutEntriesThereIsNoHeavyBlock)
{
    WvFile file;
    NodeSets("sets").SaveDataBlocks(file, "Heavy Data", true);
    EXPECT_TRUE(Support::KeySlots(file.GetIndex(), "Heavy Data").empty());
}

TEST(NodeSets, TheHeavyBlockIsMarkedForCompressionWhenAskedFor)
{
    WvFile file;
    NodeSets nodeSets("sets");
    nodeSets.GetEntries() = {Filled('a')};
    nodeSets.SaveDataBlocks(file, "Heavy Data", true);
    EXPECT_EQ(file.GetIndex().GetSlots().GetItem(0).transformations, 1U);
}

TEST(NodeSets, AFrozenHeavyBlockIsRefused)
{
    WvFile file;
    Support::FreezeNextSlot(file.GetIndex());
    NodeSets nodeSets("sets");
    nodeSets.GetEntries() = {Filled('a')};
    Support::expectThrown<Zyl2::Exception::KeyNotFound>(
        [&] { nodeSets.SaveDataBlocks(file, "Heavy Data", false); },
        {14, "Key not found", "Index::Put", "Zyl2/Wvf/Index"});
}

} // namespace
