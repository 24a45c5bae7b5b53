#include "Zyl2/Mox/VirtualNodesWithSameName.h"

#include "Zyl2/Mox/Group.h"
#include "Zyl2/Mox/Shape.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Zyl2Mox::Group;
using Zyl2Mox::Node;
using Zyl2Mox::Shape;
using Zyl2Mox::VirtualNodesWithSameName;

bool AreSame(Node const& left, Node const& right)
{
    return VirtualNodesWithSameName()(&left, &right);
}

TEST(VirtualNodesWithSameName, OnlyTheNameHasToBeTheSame)
{
    Node const probe("a");
    EXPECT_TRUE(AreSame(probe, Shape("a")));
    EXPECT_TRUE(AreSame(probe, Group("a", Zyl2Util::AttributeList())));
    EXPECT_FALSE(AreSame(probe, Shape("b")));
    EXPECT_FALSE(AreSame(probe, Shape("aa")));
    EXPECT_FALSE(AreSame(Node(std::string("a\0b", 3)), Shape("a")));
}

TEST(VirtualNodesWithSameName, ARecordWithoutNodeMatchesNothing)
{
    Node const probe("");
    EXPECT_FALSE(VirtualNodesWithSameName()(&probe, nullptr));
    EXPECT_FALSE(VirtualNodesWithSameName()(nullptr, &probe));
    EXPECT_FALSE(VirtualNodesWithSameName()(nullptr, nullptr));
}

} // namespace
