#include "Zyl2/Mox/NumericArray.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using Zyl2Mox::ElementCode;
using Zyl2Mox::NumericArray;

TEST(NumericArray, WithoutValuesThereIsNothing)
{
    NumericArray const array;
    EXPECT_EQ(array.GetWidth(), 0U);
    EXPECT_EQ(array.GetNumElements(), 0U);
    EXPECT_EQ(array.GetData(), nullptr);
    EXPECT_EQ(array.GetByteCount(), 0U);
    EXPECT_EQ(array.GetElementCode(), ElementCode::None);
}

TEST(NumericArray, CountsValuesOfFourBytesNotRows)
{
    std::array<float, 6> const values{};
    NumericArray const array(values.data(), sizeof values, 3, ElementCode::Float);
    EXPECT_EQ(array.GetWidth(), 3U);
    EXPECT_EQ(array.GetNumElements(), 6U);
    EXPECT_EQ(array.GetData(), values.data());
    EXPECT_EQ(array.GetByteCount(), 24U);
    EXPECT_EQ(array.GetElementCode(), ElementCode::Float);
}

TEST(NumericArray, BytesThatFillNoValueAreNotCounted)
{
    EXPECT_EQ(NumericArray(nullptr, 11, 1, ElementCode::UnsignedInt).GetNumElements(), 2U);
}

} // namespace
