#ifndef ZYL2_WVF_BLOCKZLIBCOMPRESSOR_H
#define ZYL2_WVF_BLOCKZLIBCOMPRESSOR_H

#include "Zyl2/Wvf/BlockEncoder.h"
#include "Zyl2/Wvf/BlockTransformation.h"
#include "Zyl2/Wvf/SpareBuffers.h"

#include <cstddef>
#include <cstdint>

namespace Zyl2Wvf {

/// Compresses a block into its length and one zlib stream, whichever encoder makes that.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): never deleted through its base
class BlockZlibCompressor final : public BlockTransformation
{
public:
    /// \param level zlib's compression level; blocks are saved with 6
    explicit BlockZlibCompressor(int level, BlockEncoder const& encoder = ZlibEncoder)
        : level_(level), encoder_(encoder)
    {}

    /// \param spares taken from for the stream; a large content's buffer is left there
    BlockZlibCompressor(int level, BlockEncoder const& encoder, SpareBuffers& spares)
        : level_(level), encoder_(encoder), spares_(&spares)
    {}

    /// Compresses the block; a block that can't be compressed is left empty.
    /// \throws MemoryAllocationException no buffer, or the compressed block would be too long; the
    ///         block is unchanged
    void operator()(Block& block) override;

    /// Takes the buffer into which a block is compressed, for callers that compress it elsewhere.
    /// \param spares taken from, unless null
    /// \return room for the stream of a block of that length
    /// \throws MemoryAllocationException there is none
    static Zyl2Util::Buffer BufferFor(std::uint32_t length, SpareBuffers* spares);

    /// Checks, as `operator()` does, that a compressed block is short enough for the file.
    /// \throws MemoryAllocationException a stream of so many bytes is too long for a block
    static void CheckLength(std::size_t written);

private:
    void Replace(Block& block, Zyl2Util::Buffer stream, std::uint32_t length);

    int level_;
    BlockEncoder const& encoder_;
    SpareBuffers* spares_ = nullptr;
};

} // namespace Zyl2Wvf

#endif
