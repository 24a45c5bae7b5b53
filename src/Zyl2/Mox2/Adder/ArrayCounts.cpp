#include "Zyl2/Mox2/Adder/ArrayCounts.h"

#include "Zyl2/Exception/Raise.h"

namespace Zyl2 {
namespace Mox2 {
namespace Adder {

namespace {

namespace ArrayAdderSites = Exception::Sites::ArrayAdder;
constexpr std::int64_t LargestCount = 0x7FFFFFFF;
constexpr std::int64_t LargestByteCount = 0xFFFFFFFF;
constexpr std::int64_t ValueSize = 4;

} // namespace

void checkArrayCounts(std::int64_t rows, std::int64_t cols, std::int64_t components)
{
    if (rows < 0 || components < 0)
        Exception::raise(ArrayAdderSites::NegativeCount,
                         Exception::sentence(rows, " rows, ", components, " ids"));
    if (components > LargestCount)
        Exception::raise(
            ArrayAdderSites::TooManyComponents,
            Exception::sentence(components, " ids, the format counts up to ", LargestCount));
    if (rows > LargestCount)
        Exception::raise(
            ArrayAdderSites::TooManyRows,
            Exception::sentence(rows, " rows, the format counts up to ", LargestCount));
    // A dataset lies in one block, whose length has 32 bits.
    if (rows != 0 && cols > LargestByteCount / ValueSize / rows)
        Exception::raise(ArrayAdderSites::TooManyBytes,
                         Exception::sentence(rows, " rows of ", cols,
                                             " columns take more bytes than a dataset may have, ",
                                             LargestByteCount));
}

} // namespace Adder
} // namespace Mox2
} // namespace Zyl2
