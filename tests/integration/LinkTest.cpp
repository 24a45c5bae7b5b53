#include "integration/CheckedModel.h"

#include "container/TemporaryFile.h"

#include <gtest/gtest.h>

namespace Integration {

namespace {

using Zyl2::Mox2::DatasetType;
using Zyl2::Mox2::NodeType;

class LinkTest : public testing::Test
{
protected:
    LinkTest()
    {
        model.save();
        model.addNode(NodeType::RootGroup, "root");
        for (int count = 0; count < 4; ++count) {
            model.setCurrentNodeId(1);
            shapes.push_back(model.addNode(NodeType::Shape, "shape " + std::to_string(count)));
        }
    }

    /// Adds a displacement of values that no other call gives.
    void add(std::vector<unsigned int> const& ids, std::vector<std::string> const& steps)
    {
        ArrayCall call;
        call.type = DatasetType::Displacement;
        call.values = Values::anyBits(random, Element::Float, 3, 6);
        call.ids = ids;
        call.attributes.set("Call", ++calls);
        call.steps.clear();
        for (std::string const& name : steps) {
            call.steps.emplace_back();
            call.steps.back().name = name;
            call.steps.back().attributes.set("Step " + name, calls);
        }
        model.addArray(call);
    }

    ExpectedVariable const& variable(unsigned int id, std::size_t index) const
    {
        return model.expected().node(id).variables.at(index);
    }

    Support::TemporaryFolder folder;
    CheckedModel model{folder.File("links.mox")};
    std::vector<unsigned int> shapes;
    Random random{7};
    int calls = 0;
};

} // namespace

TEST_F(LinkTest, SeveralIdsAndStepsShareOneDataset)
{
    add({shapes[0], shapes[1], shapes[2]}, {"a", "b"});
    EXPECT_EQ(model.expected().heavyLength(), 72U);
    EXPECT_FALSE(variable(shapes[0], 0).linked);
    EXPECT_TRUE(variable(shapes[0], 1).linked);
    EXPECT_TRUE(variable(shapes[2], 1).linked);
    model.closeAndCompare();
}

TEST_F(LinkTest, IdsThatAreNoGeometriesArePassedOver)
{
    add({1, shapes[1] - 1, shapes[2], shapes[1]}, {"a"});
    EXPECT_FALSE(variable(shapes[2], 0).linked);
    EXPECT_EQ(variable(shapes[1], 0).link.nodeId, shapes[2]);
    model.closeAndCompare();
}

TEST_F(LinkTest, AnIdGivenTwiceDoesNotLinkToItself)
{
    add({shapes[0], shapes[0]}, {"a", "b"});
    EXPECT_FALSE(variable(shapes[0], 0).linked);
    EXPECT_TRUE(variable(shapes[0], 1).linked);
    model.closeAndCompare();
}

TEST_F(LinkTest, AStepGivenTwiceDoesNotLinkToItself)
{
    add({shapes[0], shapes[1]}, {"a", "a"});
    EXPECT_FALSE(variable(shapes[0], 0).linked);
    EXPECT_EQ(model.expected().node(shapes[0]).variables.size(), 1U);
    model.closeAndCompare();
}

TEST_F(LinkTest, ALinkedVariableGivenAgainHasItsOwnValues)
{
    add({shapes[0], shapes[1]}, {"a"});
    EXPECT_TRUE(variable(shapes[1], 0).linked);
    add({shapes[1]}, {"a"});
    EXPECT_FALSE(variable(shapes[1], 0).linked);
    model.closeAndCompare();
}

TEST_F(LinkTest, IdsGivenAgainInTheOtherOrderMakeNoCircle)
{
    add({shapes[0], shapes[1]}, {"a"});
    add({shapes[1], shapes[0]}, {"a"});
    EXPECT_EQ(variable(shapes[0], 0).link.nodeId, shapes[1]);
    EXPECT_FALSE(variable(shapes[1], 0).linked);
    model.closeAndCompare();
}

TEST_F(LinkTest, LinksLeadOnOverALinkedTarget)
{
    add({shapes[0], shapes[1]}, {"a"});
    add({shapes[2], shapes[0]}, {"a"});
    EXPECT_EQ(variable(shapes[1], 0).link.nodeId, shapes[0]);
    EXPECT_EQ(variable(shapes[0], 0).link.nodeId, shapes[2]);
    model.closeAndCompare();
}

TEST_F(LinkTest, NoStepsStoreValuesThatNobodyRefersTo)
{
    add({shapes[0]}, {});
    add({shapes[0]}, {"a"});
    EXPECT_EQ(model.expected().heavyLength(), 144U);
    EXPECT_EQ(model.expected().node(shapes[0]).variables.size(), 1U);
    model.closeAndCompare();
}

TEST_F(LinkTest, TheSameNameAgainTakesTheNewTypeAndValues)
{
    ArrayCall call;
    call.type = DatasetType::Displacement;
    call.values = Values::ascending(Element::Float, 3, 4);
    call.ids = {shapes[0]};
    call.attributes.set("Old", 1);
    model.addArray(call);
    ArrayCall again;
    again.type = DatasetType::Displacement6;
    again.values = Values::ascending(Element::Uint32, 6, 9);
    again.ids = {shapes[0]};
    again.attributes.set("New", 2);
    model.addArray(again);
    EXPECT_EQ(model.expected().node(shapes[0]).variables.size(), 1U);
    model.closeAndCompare();
}

TEST_F(LinkTest, AHundredStepsOnFourShapesShareOneDataset)
{
    std::vector<std::string> steps;
    for (int count = 0; count < 100; ++count)
        steps.push_back("step " + std::to_string(count));
    add(shapes, steps);
    EXPECT_EQ(model.expected().heavyLength(), 72U);
    model.closeAndCompare();
}

} // namespace Integration
