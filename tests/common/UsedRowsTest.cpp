#include <common/UsedRows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

using Rows = std::vector<std::uint32_t>;

TEST(UsedRows, EachRowIsThereOnceAndAscending)
{
    Common::UsedRows const near({7, 5, 5, 9, 7});
    EXPECT_EQ(near.rows(), (Rows{5, 7, 9}));
    Common::UsedRows const far({4000000000, 5, 5, 70000, 5});
    EXPECT_EQ(far.rows(), (Rows{5, 70000, 4000000000}));
    EXPECT_EQ(Common::UsedRows({}).rows(), Rows{});
}

TEST(UsedRows, EveryRowTellsItsPlace)
{
    for (Rows const& references : {Rows{7, 5, 5, 9, 7}, Rows{4000000000, 5, 5, 70000, 5}}) {
        Common::UsedRows const used(references);
        for (std::uint32_t place = 0; place < used.rows().size(); ++place)
            EXPECT_EQ(used.placeOf(used.rows()[place]), place);
    }
}

} // namespace
