#ifndef ZYL2_WVF_BLOCKSIZELIMITER_H
#define ZYL2_WVF_BLOCKSIZELIMITER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Zyl2Wvf {

class BlockKeeper;

/// The blocks of one key, and the length from which on a block of the key counts as full.
struct BlockSizeLimiter
{
    /// Takes the limit from the environment: 200 MiB unless MOXWRITER_DEFAULT_BLOCK_SIZE says
    /// otherwise. 0 is a limit too: every write then goes to a block of its own.
    BlockSizeLimiter();

    explicit BlockSizeLimiter(std::uint32_t bytes) : limit(bytes) {}

    /// Slots of the key in the order in which they were assigned.
    std::vector<std::size_t> blocks;
    /// Bytes.
    std::uint32_t limit;
    /// Whether a block is compressed when the next one is begun, rather than when it is saved.
    bool compressesFullBlocks = false;
    /// Where the key's blocks are until they are saved; null where they are in memory alone.
    BlockKeeper* keeper = nullptr;

    // What follows is remembered, so that nobody has to walk over all blocks of a key for it.

    /// Untransformed bytes in all blocks but the last one, which alone can still grow.
    std::uint64_t lengthBeforeLast = 0;
    /// Leading blocks that are known to be frozen.
    std::size_t frozenBlocks = 0;
    /// For each transformation bit, the leading blocks that bear it already.
    std::array<std::size_t, 8> markedBlocks{};
};

} // namespace Zyl2Wvf

#endif
