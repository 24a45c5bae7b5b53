#include "ValueText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace {

MoxRead::Dataset floatsOf(std::vector<float> const& values)
{
    MoxRead::Dataset dataset;
    dataset.width = 1;
    for (float const value : values) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        dataset.words.push_back(bits);
    }
    return dataset;
}

} // namespace

TEST(ValueText, NumbersAreWrittenAsShortAsTheyCanBeReadBack)
{
    EXPECT_EQ(textOf(0.1F), "0.1");
    EXPECT_EQ(textOf(0.1), "0.1");
    EXPECT_EQ(textOf(-1e-30F), "-1e-30");
    EXPECT_EQ(textOf(2.F), "2");
}

TEST(ValueText, ARangeLeavesOutWhatIsNoNumber)
{
    EXPECT_EQ(rangeText(floatsOf({2, -1.5F, 7})), "range -1.5..7");
    EXPECT_EQ(rangeText(floatsOf({NAN, 2, NAN})), "range 2..2 and 2 NaN");
    EXPECT_EQ(rangeText(floatsOf({NAN, NAN})), "all NaN");
    EXPECT_EQ(rangeText(floatsOf({})), "empty");
    EXPECT_EQ(rangeText(floatsOf({INFINITY, 0})), "range 0..inf");
}

TEST(ValueText, ARangeOfUnsignedNumbersIsUnsigned)
{
    MoxRead::Dataset dataset;
    dataset.elementType = MoxRead::ElementType::Uint32;
    dataset.width = 1;
    dataset.words = {4294967295U, 3, 9};
    EXPECT_EQ(rangeText(dataset), "range 3..4294967295");
}
