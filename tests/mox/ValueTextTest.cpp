#include "mox/print/ValueText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace {

using Mox::textOf;
using Mox::ValueRange;

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

TEST(ValueText, NumbersForPeopleHaveSixDigits)
{
    EXPECT_EQ(Mox::roundedTextOf(0.00012299999999999998), "0.000123");
    EXPECT_EQ(Mox::roundedTextOf(231.3177853411374), "231.318");
    EXPECT_EQ(Mox::roundedTextOf(10.5), "10.5");
    EXPECT_EQ(Mox::roundedTextOf(0), "0");
}

TEST(ValueText, ARangeLeavesOutWhatIsNoNumber)
{
    EXPECT_EQ(ValueRange::of(floatsOf({2, -1.5F, 7})).text(), "range -1.5..7");
    EXPECT_EQ(ValueRange::of(floatsOf({NAN, 2, NAN})).text(), "range 2..2 and 2 NaN");
    EXPECT_EQ(ValueRange::of(floatsOf({NAN, NAN})).text(), "all NaN");
    EXPECT_EQ(ValueRange::of(floatsOf({})).text(), "empty");
    EXPECT_EQ(ValueRange::of(floatsOf({INFINITY, 0})).text(), "range 0..inf");
}

TEST(ValueText, ARangeOfUnsignedNumbersIsUnsigned)
{
    MoxRead::Dataset dataset;
    dataset.elementType = MoxRead::ElementType::Uint32;
    dataset.width = 1;
    dataset.words = {4294967295U, 3, 9};
    EXPECT_EQ(ValueRange::of(dataset).text(), "range 3..4294967295");
}
