#include <exchange/StepAttributes.h>

#include <gtest/gtest.h>

namespace {

using namespace Exchange;

TEST(StepAttributes, ATimeThatAFloatHoldsNeedsNoText)
{
    EXPECT_EQ(stepAttributes({"S", 0.25, {}}, 3),
              (AttributeList{{"StepNumber", 3}, {"Time", 0.25F}}));
}

TEST(StepAttributes, ATimeThatAFloatRoundsIsATextToo)
{
    EXPECT_EQ(stepAttributes({"S", 0.1, {}}, 1),
              (AttributeList{{"StepNumber", 1}, {"Time", 0.1F}, {"TimeText", std::string("0.1")}}));
    EXPECT_EQ(stepAttributes({"S", 1e300, {}}, 1),
              (AttributeList{{"StepNumber", 1},
                             {"Time", std::numeric_limits<float>::infinity()},
                             {"TimeText", std::string("1e+300")}}));
}

TEST(StepAttributes, WithoutATimeThereIsNone)
{
    EXPECT_EQ(stepAttributes({"S", {}, {{"Mode", 2}}}, 1),
              (AttributeList{{"StepNumber", 1}, {"Mode", 2}}));
}

} // namespace
