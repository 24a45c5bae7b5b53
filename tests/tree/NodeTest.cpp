#include "Zyl2/Mox/Node.h"

#include "Zyl2/Mox/Geometry.h"
#include "Zyl2/Mox/Group.h"
#include "Zyl2/Mox/Material.h"
#include "Zyl2/Mox/NodeSets.h"
#include "Zyl2/Mox/Shape.h"
#include "Zyl2/Wvf/Block.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Zyl2Mox::Node;

/// One of each kind, as they are without anything set.
std::vector<std::pair<std::string, std::unique_ptr<Node>>> EveryKind()
{
    std::vector<std::pair<std::string, std::unique_ptr<Node>>> kinds;
    kinds.emplace_back("Node 0.1", std::make_unique<Node>("n"));
    kinds.emplace_back("Group 0.4",
                       std::make_unique<Zyl2Mox::Group>("n", Zyl2Util::AttributeList()));
    kinds.emplace_back("Shape 0.2", std::make_unique<Zyl2Mox::Shape>("n"));
    kinds.emplace_back("Geometry 0.7", std::make_unique<Zyl2Mox::Geometry>("n"));
    kinds.emplace_back("Material 0.3", std::make_unique<Zyl2Mox::Material>());
    kinds.emplace_back("NodeSets 0.1", std::make_unique<Zyl2Mox::NodeSets>("n"));
    return kinds;
}

TEST(Node, EveryKindHasItsTypeAndVersionWhichLoadingAndSavingLeaveAlone)
{
    for (auto const& [kind, node] : EveryKind()) {
        SCOPED_TRACE(kind);
        Zyl2Wvf::Block block;
        node->Load("somewhere");
        node->Save();
        node->CopyToBlock(block);
        node->CopyFromBlock(block);
        EXPECT_EQ(node->GetType() + ' ' + node->GetVersion(), kind);
        EXPECT_FALSE(node->IsLoaded());
        EXPECT_EQ(block.GetLength(), 0U);
    }
}

} // namespace
