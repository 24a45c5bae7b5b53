#ifndef ZYL2_MOX_RESULTATTRIBUTES_H
#define ZYL2_MOX_RESULTATTRIBUTES_H

#include "Zyl2/Wvf/Block.h"

#include <array>
#include <cstdint>
#include <vector>

namespace Zyl2Mox {

/// A record of 96 bytes that stands in the file as it is.
struct ResultAttributes
{
    std::array<std::uint8_t, 96> bytes{};
};

// The list: count, 4, and 96 bytes each.
std::uint64_t EncodedSize(std::vector<ResultAttributes> const& list);
void CopyToBlock(Zyl2Wvf::Block& block, std::vector<ResultAttributes> const& list);

} // namespace Zyl2Mox

#endif
