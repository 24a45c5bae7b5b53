#include "Zyl2/Mox/ResultAttributes.h"

#include "Zyl2/Wvf/CopyToBlock.h"

namespace Zyl2Mox {

std::uint64_t EncodedSize(std::vector<ResultAttributes> const& list)
{
    return sizeof(std::uint32_t) + std::uint64_t(list.size()) * sizeof(ResultAttributes::bytes);
}

void CopyToBlock(Zyl2Wvf::Block& block, std::vector<ResultAttributes> const& list)
{
    Zyl2Wvf::CopyToBlock(block, Zyl2Wvf::EncodedCount(list.size()));
    for (ResultAttributes const& attributes : list)
        block.Append(attributes.bytes.data(), attributes.bytes.size());
}

} // namespace Zyl2Mox
