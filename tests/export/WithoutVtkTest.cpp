#include "mox/Command.h"

#include <gtest/gtest.h>

namespace {

constexpr char const* complaint =
    "This mox was built without VTK; it needs the package libvtk9-dev when it is built.\n";

TEST(WithoutVtk, CommandsForViewersSayWhatIsMissing)
{
    MoxTest::Outcome const exported = MoxTest::run("export in.mox out.vtu");
    EXPECT_EQ(exported.status, 1);
    EXPECT_EQ(exported.out, "");
    EXPECT_EQ(exported.err, std::string("mox export: ") + complaint);
    MoxTest::Outcome const viewed = MoxTest::run("view in.mox out.png");
    EXPECT_EQ(viewed.status, 1);
    EXPECT_EQ(viewed.out, "");
    EXPECT_EQ(viewed.err, std::string("mox view: ") + complaint);
}

TEST(WithoutVtk, BadUsageIsStillTold)
{
    EXPECT_EQ(MoxTest::run("export in.mox out.txt").status, 2);
    EXPECT_EQ(MoxTest::run("view --help").status, 0);
}

} // namespace
