#ifndef ZYL2_WVF_BLOCKTRANSFORMATION_H
#define ZYL2_WVF_BLOCKTRANSFORMATION_H

#include <cstdint>

namespace Zyl2Wvf {

class Block;

/// What happens to a block when it is saved; the values combine by bitwise OR and stand in the
/// block's index entry.
enum class BlockTransformationType : std::uint8_t
{
    /// The block is compressed with zlib.
    Compress = 1,
    /// The block accepts no more data once it has been saved, so that it may be saved early.
    Freeze = 32
};

/// Whether the bit of `type` is set in `transformations`.
constexpr bool Has(std::uint8_t transformations, BlockTransformationType type)
{
    return (transformations & static_cast<std::uint8_t>(type)) != 0;
}

/// Rewrites a block in place.
class BlockTransformation
{
public:
    virtual void operator()(Block& block) = 0;

protected:
    BlockTransformation() = default;
    BlockTransformation(BlockTransformation const&) = default;
    BlockTransformation& operator=(BlockTransformation const&) = default;
    ~BlockTransformation() = default;
};

} // namespace Zyl2Wvf

#endif
