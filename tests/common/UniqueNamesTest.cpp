#include <common/UniqueNames.h>

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace {

TEST(UniqueNames, ANameThatIsTakenGetsTheNextFreeNumber)
{
    Common::UniqueNames names;
    EXPECT_EQ(names.make("DISP"), "DISP");
    EXPECT_EQ(names.make("DISP"), "DISP (2)");
    EXPECT_EQ(names.make("DISP (3)"), "DISP (3)");
    EXPECT_EQ(names.make("DISP"), "DISP (4)");
    EXPECT_EQ(names.make("STRESS"), "STRESS");
}

TEST(UniqueNames, ManyNamesAlikeTakeTheTimeOfTheirNumber)
{
    Common::UniqueNames names;
    std::string last;
    auto const start = std::chrono::steady_clock::now();
    for (int i = 0; i < 300000; ++i)
        last = names.make("Step 1");
    EXPECT_EQ(last, "Step 1 (300000)");
    // Counting from 2 for each of them takes more than an hour.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

} // namespace
