#include "Zyl2/Util/StridedValues.h"
#include "Zyl2/Util/Misfit.h"
#include "Zyl2/Util/Shuffle.h"
#include "Zyl2/Util/ShuffleKernels.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace Zyl2Util;
using Element = StridedValues::Element;

bool isOldProcessor = false;

} // namespace

#if defined(__x86_64__)
// The linker sends the library's question here.
// NOLINTBEGIN(bugprone-reserved-identifier): the linker chooses the names
extern "C" {
bool __real__ZN8Zyl2Util10CpuHasAvx2Ev();
bool __wrap__ZN8Zyl2Util10CpuHasAvx2Ev();

bool __wrap__ZN8Zyl2Util10CpuHasAvx2Ev()
{
    return !isOldProcessor && __real__ZN8Zyl2Util10CpuHasAvx2Ev();
}
}
// NOLINTEND(bugprone-reserved-identifier)
#endif

namespace {

class StridedValuesTest : public testing::TestWithParam<bool>
{
protected:
    StridedValuesTest() { isOldProcessor = GetParam(); }
    ~StridedValuesTest() override { isOldProcessor = false; }
};

/// Three columns, one row behind the other.
template <typename T>
StridedValues tableOf(std::vector<T> const& values, Element element)
{
    constexpr std::size_t width = 3;
    return {reinterpret_cast<unsigned char const*>(values.data()),
            values.size() / width,
            width,
            static_cast<std::ptrdiff_t>(width * sizeof(T)),
            static_cast<std::ptrdiff_t>(sizeof(T)),
            element};
}

/// Expects the bytes of values that were converted one by one, and the last value alone to be told
/// of when it is replaced by one that does not fit.
template <typename T, typename StoredT>
void expectConverted(Element element, T misfit)
{
    SCOPED_TRACE("element " + std::to_string(static_cast<int>(element)));
    std::vector<T> values(3 * 1001);
    for (std::size_t at = 0; at < values.size(); ++at)
        values[at] = static_cast<T>(static_cast<double>(at) * 1.7);
    std::vector<StoredT> expected(values.begin(), values.end());
    ShuffleMultiVectorBytes(expected, 3);
    std::vector<StoredT> shuffled(values.size());
    EXPECT_TRUE(ShuffleStrided(tableOf(values, element), shuffled.data()));
    // As bytes: some of them are no number.
    EXPECT_EQ(std::memcmp(shuffled.data(), expected.data(), expected.size() * sizeof(StoredT)), 0);
    EXPECT_FALSE(FindMisfit(tableOf(values, element)));

    values.back() = misfit;
    EXPECT_FALSE(ShuffleStrided(tableOf(values, element), shuffled.data()));
    auto const found = FindMisfit(tableOf(values, element));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->row, 1000U);
    EXPECT_EQ(found->column, 2U);
}

TEST_P(StridedValuesTest, AreConvertedAndJudgedAlikeByEveryProcessor)
{
    expectConverted<double, float>(Element::Double, 1e39);
    expectConverted<std::int32_t, std::uint32_t>(Element::Int32, -1);
    expectConverted<std::int64_t, std::uint32_t>(Element::Int64, -1);
    expectConverted<std::uint64_t, std::uint32_t>(Element::UnsignedInt64, 1ULL << 32U);
}

INSTANTIATE_TEST_SUITE_P(Every, StridedValuesTest, testing::Bool(),
                         [](auto const& one) { return one.param ? "WithoutAvx2" : "AsItIs"; });

} // namespace
