#include "Zyl2/Mox/ArrayDescription.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using Zyl2Mox::ArrayDescription;
using Zyl2Mox::ElementCode;
using Zyl2Mox::NumericArray;

TEST(ArrayDescription, TellsKindNumberOfValuesAndWidth)
{
    ArrayDescription const description =
        Zyl2Mox::Describe(NumericArray(nullptr, 48, 3, ElementCode::UnsignedInt));
    EXPECT_EQ(description.kind, ElementCode::UnsignedInt);
    EXPECT_EQ(description.valueCount, 12);
    EXPECT_EQ(description.width, 3U);
}

TEST(ArrayDescription, AllElseIsZero)
{
    ArrayDescription const description =
        Zyl2Mox::Describe(NumericArray(nullptr, 48, 3, ElementCode::Float));
    EXPECT_EQ(description.flags, (std::array<bool, 2>{false, false}));
    EXPECT_EQ(description.floats, (std::array<float, 2>{0.0F, 0.0F}));
    EXPECT_FALSE(description.lastFlag);
}

} // namespace
