#include "Zyl2/Mox2/GetComponentArray.h"

#include <gtest/gtest.h>

namespace {

using namespace Zyl2::Mox2;

TEST(GetComponentArray, OfAnArrayIsTheArraysOwnStorage)
{
    Array1d<unsigned int> const ids{4, 5};
    ComponentArray const& components = getComponentArray(ids);
    EXPECT_EQ(&components, &ids.impl().array);
    ASSERT_EQ(components.size(), 2);
    EXPECT_EQ(components(1), 5U);
}

TEST(GetComponentArray, OfAnIdIsAnArrayThatHoldsIt)
{
    ComponentArray const& components = getComponentArray(7U);
    ASSERT_EQ(components.size(), 1);
    EXPECT_EQ(components(0), 7U);
}

TEST(GetComponentArray, OfTwoIdsInARowIsTheSameArrayHoldingTheSecondId)
{
    ComponentArray const& first = getComponentArray(7U);
    ComponentArray const& second = getComponentArray(8U);
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(first(0), 8U);
}

} // namespace
