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

TEST(NodeSets, TheHeavyBlockIsMarkedForCompressionWhenAskedFor)
{
    WvFile file;
    NodeSets nodeSets("sets");
    nodeSets.GetEntries() = {Filled('a')};
    nodeSets.SaveDataBlocks(file, "Heavy Data", true);
    EXPECT_EQ(file.GetIndex().GetSlots().GetItem(0).transformations, 1U);
}

} // namespace
