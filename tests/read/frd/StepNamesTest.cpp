#include <read/frd/StepNames.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using Frd::ResultBlock;
using Frd::StepNames;

ResultBlock block(std::int32_t stepNumber, double value)
{
    ResultBlock result{};
    result.stepNumber = stepNumber;
    result.value = value;
    return result;
}

ResultBlock increment(std::int32_t step, std::int32_t number, std::int32_t stepNumber, double value)
{
    ResultBlock result = block(stepNumber, value);
    result.step = Frd::StepNumbers{number, step};
    return result;
}

TEST(StepNames, IncrementsAndModesAreNamedAfterTheirNumbers)
{
    StepNames names;
    EXPECT_EQ(names.stepName(increment(1, 3, 3, 0.3)), "Step 1 Increment 3");
    ResultBlock mode = increment(2, 1, 14, 5013.8);
    mode.mode = 4;
    EXPECT_EQ(names.stepName(mode), "Step 2 Mode 4");
    EXPECT_EQ(names.stepName(block(7, 1)), "Step 7");
}

TEST(StepNames, BlocksOfOneStepShareItsName)
{
    StepNames names;
    names.stepName(increment(1, 1, 1, 0.1));
    names.stepName(increment(1, 2, 2, 0.2));
    EXPECT_EQ(names.stepName(increment(1, 1, 1, 0.1)), "Step 1 Increment 1");
}

TEST(StepNames, StepsThatTheSolverNumbersAlikeAreKeptApart)
{
    StepNames names;
    EXPECT_EQ(names.stepName(increment(1, 1, 1, 0)), "Step 1 Increment 1");
    EXPECT_EQ(names.stepName(increment(1, 1, 2, 2636.9)), "Step 1 Increment 1 (2)");
    EXPECT_EQ(names.stepName(increment(1, 1, 3, 2783.5)), "Step 1 Increment 1 (3)");
    EXPECT_EQ(names.stepName(increment(1, 1, 2, 2636.9)), "Step 1 Increment 1 (2)");
}

TEST(StepNames, StepsOfTheSameValueAreKeptApartByTheirRunningNumber)
{
    StepNames names;
    EXPECT_EQ(names.stepName(increment(1, 1, 1, 2636.9)), "Step 1 Increment 1");
    EXPECT_EQ(names.stepName(increment(1, 1, 2, 2636.9)), "Step 1 Increment 1 (2)");
}

TEST(StepNames, StepsOfTheSameRunningNumberAreKeptApartByTheirValue)
{
    StepNames names;
    EXPECT_EQ(names.stepName(block(1, 0.1)), "Step 1");
    EXPECT_EQ(names.stepName(block(1, 0.2)), "Step 1 (2)");
}

TEST(StepNames, AValueThatIsNotANumberIsStillTheSameStep)
{
    StepNames names;
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(names.stepName(block(1, nan)), "Step 1");
    EXPECT_EQ(names.stepName(block(1, nan)), "Step 1");
}

TEST(StepNames, ARepeatedResultOfAStepGetsANameOfItsOwn)
{
    StepNames names;
    ResultBlock const first = increment(1, 1, 1, 0.1);
    EXPECT_EQ(names.resultName(first, "STRESS"), "STRESS");
    EXPECT_EQ(names.resultName(first, "STRESS"), "STRESS (2)");
    EXPECT_EQ(names.resultName(increment(1, 2, 2, 0.2), "STRESS"), "STRESS");
}

} // namespace
