#include <exchange/Error.h>
#include <exchange/Report.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

using Exchange::Error;
using Exchange::Report;
using Sentences = std::vector<std::string>;

TEST(Report, HasNothingToTellOfValuesThatFloatsHoldExactly)
{
    Report report;
    EXPECT_EQ(report.narrow(0.5), 0.5F);
    EXPECT_TRUE(std::signbit(report.narrow(-0.0)));
    EXPECT_TRUE(std::isnan(report.narrow(std::numeric_limits<double>::quiet_NaN())));
    EXPECT_EQ(report.narrow(-std::numeric_limits<double>::infinity()),
              -std::numeric_limits<float>::infinity());
    EXPECT_EQ(report.narrow(std::numeric_limits<float>::denorm_min()),
              std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(report.largestError(), 0);
    EXPECT_EQ(report.warnings(), Sentences());
}

TEST(Report, TellsTheLargestRelativeErrorOfAllValues)
{
    Report report;
    EXPECT_EQ(report.narrow(1 + std::ldexp(1.0, -30)), 1.0F);
    EXPECT_EQ(report.narrow(-1 - std::ldexp(1.0, -26)), -1.0F);
    EXPECT_NEAR(report.largestError(), std::ldexp(1.0, -26), 1e-15);
    EXPECT_EQ(report.warnings(), (Sentences{"2 values were rounded to single precision with a "
                                            "relative error of at most 1.5e-08."}));
}

TEST(Report, TellsWhatIsTooLargeOrTooSmallForAFloat)
{
    Report report;
    EXPECT_EQ(report.narrow(-1e300), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(report.narrow(1e-300), 0.0F);
    EXPECT_EQ(report.largestError(), 0);
    EXPECT_EQ(report.warnings(),
              (Sentences{"1 value too small for single precision became 0 or inexact, 1 value "
                         "too large for single precision became infinite."}));
}

TEST(Report, TellsASentenceOnce)
{
    Report report;
    report.warn("b");
    report.warn("a");
    report.warn("b");
    EXPECT_EQ(report.warnings(), (Sentences{"b", "a"}));
}

TEST(Report, RefusesUnknownElementsUnlessTheyAreToBeLeftOut)
{
    Report report;
    EXPECT_NO_THROW(report.unknownElements("polyhedron", 0));
    try {
        report.unknownElements("polyhedron", 3);
        FAIL();
    } catch (Error const& error) {
        EXPECT_STREQ(error.what(), "A model cannot hold 3 elements of the type polyhedron; "
                                   "--skip-unknown leaves them out.");
    }
    report.skipUnknown = true;
    report.unknownElements("polyhedron", 3);
    report.unknownElements("polyhedron", 2);
    report.unknownElements("empty cell", 1);
    EXPECT_EQ(report.warnings(), (Sentences{"1 element of the type empty cell was left out.",
                                            "5 elements of the type polyhedron were left out."}));
}

} // namespace
