#ifndef ZYL2_WVF_BLOCKKEEPER_H
#define ZYL2_WVF_BLOCKKEEPER_H

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace Zyl2Wvf {

class Block;

/// Keeps the content of blocks where it outlives the process, until the blocks are in the file.
/// \sa KeptBlocks
class BlockKeeper
{
public:
    virtual ~BlockKeeper() = default;

    /// Sees to it that the block has kept room for `size` bytes more.
    /// \param slot     the block's
    /// \param position of the block's first byte in the stream of its key
    /// \param limit    bytes from which on the block counts as full
    /// \throws FileWriteException there is no room; the block is unchanged
    virtual void MakeRoom(Block& block, std::size_t slot, std::uint64_t position, std::size_t size,
                          std::uint32_t limit) = 0;

    /// The room that was made is filled from `position` of the key's stream on.
    /// \throws FileWriteException that can't be noted
    virtual void NoteFilled(std::uint64_t position, unsigned char const* bytes,
                            std::size_t size) = 0;

    /// The block was written to the stream, and its content is in no buffer any more.
    /// \param offset        in the file
    /// \param size          bytes in the file
    /// \param contentLength bytes before they were compressed
    /// \throws FileWriteException the bytes don't reach the file, or it can't be noted; the content
    ///         is kept
    virtual void NoteSaved(std::size_t slot, std::uint64_t offset, std::uint32_t size,
                           std::uint32_t contentLength, std::FILE* stream) = 0;

    /// Whether this is the process that made the object: in one that was forked from it, nothing
    /// may be put.
    virtual bool IsOwnProcess() const = 0;
};

} // namespace Zyl2Wvf

#endif
