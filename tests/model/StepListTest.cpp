#include <Zyl2/Mox2/StepList.h>

#include "Zyl2/Mox2/StepData.h"

#include <gtest/gtest.h>

namespace {

using namespace Zyl2::Mox2;

Step makeStep(std::string const& name, int number)
{
    Step step;
    step.name = name;
    step.attributes.set("Number", number);
    return step;
}

int numberOf(Step const& step)
{
    return boost::get<int>(step.attributes.map().at("Number"));
}

TEST(Step, IsBuiltFromANameAndAttributes)
{
    Attributes attributes;
    attributes.set("Number", 4);
    EXPECT_EQ(Step("t1").name, "t1");
    EXPECT_TRUE(Step("t1").attributes.map().empty());
    EXPECT_EQ(numberOf(Step("t1", attributes)), 4);
}

TEST(StepList, OfTwoHasASecondStepWithoutNameAndAttributes)
{
    Step const step = StepList(2)[1];
    EXPECT_EQ(step.name, "");
    EXPECT_TRUE(step.attributes.map().empty());
}

TEST(StepList, GivesBackWhatWasSet)
{
    StepList steps(2);
    steps.set(1, makeStep("t1", 7));
    EXPECT_EQ(steps[1].name, "t1");
    EXPECT_EQ(numberOf(steps[1]), 7);
    EXPECT_EQ(steps[0].name, "");
}

TEST(StepList, ReplacesNameAndAttributesTogether)
{
    StepList steps(1);
    steps.set(0, makeStep("t1", 7));
    steps.set(0, Step("t2"));
    EXPECT_EQ(steps[0].name, "t2");
    EXPECT_TRUE(steps[0].attributes.map().empty());
}

TEST(StepList, IsCopiedDeeply)
{
    StepList source(1);
    source.set(0, makeStep("t1", 7));
    StepList copy(source);
    copy.set(0, makeStep("t2", 8));
    EXPECT_EQ(source[0].name, "t1");
    EXPECT_EQ(numberOf(source[0]), 7);
    EXPECT_EQ(copy[0].name, "t2");
}

TEST(StepList, TakesTheStepsThatAreAssigned)
{
    StepList source(2);
    source.set(1, makeStep("t1", 7));
    StepList target(1);
    auto const* const storage = &target.data();
    target = source;
    source.set(1, makeStep("t2", 8));
    EXPECT_EQ(&target.data(), storage);
    ASSERT_EQ(target.size(), 2U);
    EXPECT_EQ(target[1].name, "t1");
    EXPECT_EQ(numberOf(target[1]), 7);
}

} // namespace
