#include "Zyl2/Mox/Node.h"

#include "Zyl2/Wvf/Block.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using Zyl2Mox::Node;

TEST(Node, CarriesItsNameTypeAndVersion)
{
    Node const node("a name");
    EXPECT_EQ(node.GetName(), "a name");
    EXPECT_EQ(node.GetType(), "Node");
    EXPECT_EQ(node.GetVersion(), "0.1");
    EXPECT_FALSE(node.IsLoaded());
}

TEST(Node, KeepsEveryByteOfItsName)
{
    std::string const name("a\0b\xff/", 5);
    EXPECT_EQ(Node(name).GetName(), name);
}

TEST(Node, LoadSaveAndCopyingHaveNoEffect)
{
    Node node("a");
    Zyl2Wvf::Block block;
    block.Append("xyz", 3);
    node.Load("somewhere");
    node.Save();
    node.CopyToBlock(block);
    node.CopyFromBlock(block);
    EXPECT_EQ(node.GetName(), "a");
    EXPECT_EQ(node.GetType(), "Node");
    EXPECT_EQ(node.GetVersion(), "0.1");
    EXPECT_FALSE(node.IsLoaded());
    EXPECT_EQ(block.GetLength(), 3U);
    EXPECT_EQ(block.GetPosition(), 3U);
}

TEST(Node, IsDestroyedThroughItsBase)
{
    struct Watched : Node
    {
        explicit Watched(bool& flag) : Node(""), destroyed(&flag) {}
        Watched(Watched const&) = delete;
        Watched& operator=(Watched const&) = delete;
        ~Watched() override { *destroyed = true; }
        bool* destroyed;
    };
    bool destroyed = false;
    std::unique_ptr<Node> node = std::make_unique<Watched>(destroyed);
    node.reset();
    EXPECT_TRUE(destroyed);
}

} // namespace
