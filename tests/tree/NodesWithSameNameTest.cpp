#include "Zyl2/Mox/NodesWithSameName.h"

#include "Zyl2/Mox/Geometry.h"
#include "Zyl2/Mox/Group.h"
#include "Zyl2/Mox/Shape.h"
#include "Zyl2/Mox/VirtualNodesWithSameName.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Zyl2Mox::Geometry;
using Zyl2Mox::Group;
using Zyl2Mox::Node;
using Zyl2Mox::NodesWithSameName;
using Zyl2Mox::Shape;
using Zyl2Util::AttributeList;

class OlderShape : public Shape
{
public:
    using Shape::Shape;
    std::string GetVersion() const override { return "0.1"; }
};

bool AreSame(Node const& left, Node const& right)
{
    return NodesWithSameName()(&left, &right);
}

TEST(NodesWithSameName, NameTypeAndVersionHaveToBeTheSame)
{
    EXPECT_TRUE(AreSame(Shape("a"), Shape("a")));
    EXPECT_FALSE(AreSame(Shape("a"), Shape("b")));
    EXPECT_FALSE(AreSame(Shape("a"), Group("a", AttributeList())));
    EXPECT_FALSE(AreSame(Shape("a"), Geometry("a")));
    EXPECT_FALSE(AreSame(Shape("a"), OlderShape("a")));
}

TEST(NodesWithSameName, NamesAreComparedInLengthAndBytes)
{
    EXPECT_FALSE(AreSame(Shape("a"), Shape("ab")));
    EXPECT_FALSE(AreSame(Shape("a"), Shape("A")));
    EXPECT_FALSE(AreSame(Shape(std::string("a\0b", 3)), Shape(std::string("a\0c", 3))));
    EXPECT_TRUE(AreSame(Shape(std::string("a\0b", 3)), Shape(std::string("a\0b", 3))));
}

template <typename FunctorType>
void ExpectToMatchNoNode(FunctorType areSame)
{
    Shape const shape("");
    EXPECT_TRUE(areSame(&shape, &shape));
    EXPECT_FALSE(areSame(&shape, nullptr));
    EXPECT_FALSE(areSame(nullptr, &shape));
    EXPECT_FALSE(areSame(nullptr, nullptr));
}

TEST(NodesWithSameName, ARecordWithoutNodeMatchesNothing)
{
    ExpectToMatchNoNode(NodesWithSameName());
    ExpectToMatchNoNode(Zyl2Mox::VirtualNodesWithSameName());
}

} // namespace
