#ifndef ZYL2_MOX2_ADDER_ARRAYCOUNTS_H
#define ZYL2_MOX2_ADDER_ARRAYCOUNTS_H

#include <cstdint>

namespace Zyl2 {
namespace Mox2 {
namespace Adder {

/// Refuses what the format can't count.
/// \param rows       rows of the array
/// \param cols       values per row
/// \param components ids that the array is for
/// \throws UnderflowError a negative count
/// \throws OverflowError more than 2147483647 rows or ids, or more than 4294967295 bytes
void checkArrayCounts(std::int64_t rows, std::int64_t cols, std::int64_t components);

} // namespace Adder
} // namespace Mox2
} // namespace Zyl2

#endif
