#include "Zyl2/Mox2/GetStepList.h"

#include <gtest/gtest.h>

namespace {

using namespace Zyl2::Mox2;

TEST(GetStepList, OfAListIsTheListsOwnSteps)
{
    StepList steps(2);
    steps.set(1, Step("t1"));
    EXPECT_EQ(&getStepList(steps), &steps.data());
    EXPECT_EQ(getStepList(steps)[1].name, "t1");
}

TEST(GetStepList, OfAStepIsAListThatHoldsACopyOfIt)
{
    Step step("t1");
    step.attributes.set("Number", 7);
    std::vector<StepData> const& steps = getStepList(step);
    step.attributes.set("Number", 8);
    ASSERT_EQ(steps.size(), 1U);
    EXPECT_EQ(steps[0].name, "t1");
    EXPECT_EQ(boost::get<int>(steps[0].attributes.at("Number")), 7);
}

TEST(GetStepList, OfTwoStepsInARowIsTheSameListHoldingTheSecondStepAlone)
{
    Step first("t1");
    first.attributes.set("Number", 7);
    std::vector<StepData> const& steps = getStepList(first);
    EXPECT_EQ(&getStepList(Step("t2")), &steps);
    ASSERT_EQ(steps.size(), 1U);
    EXPECT_EQ(steps[0].name, "t2");
    EXPECT_TRUE(steps[0].attributes.empty());
}

} // namespace
