#include <frd/UniqueNames.h>

#include <gtest/gtest.h>

namespace {

TEST(UniqueNames, ANameThatIsTakenGetsTheNextFreeNumber)
{
    Frd::UniqueNames names;
    EXPECT_EQ(names.make("DISP"), "DISP");
    EXPECT_EQ(names.make("DISP"), "DISP (2)");
    EXPECT_EQ(names.make("DISP (3)"), "DISP (3)");
    EXPECT_EQ(names.make("DISP"), "DISP (4)");
    EXPECT_EQ(names.make("STRESS"), "STRESS");
}

} // namespace
