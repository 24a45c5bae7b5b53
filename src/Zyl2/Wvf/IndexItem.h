#ifndef ZYL2_WVF_INDEXITEM_H
#define ZYL2_WVF_INDEXITEM_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace Zyl2Wvf {

/// What the index knows of one block slot.
struct IndexItem
{
    /// Width of the name field on disk.
    static constexpr std::uint32_t NameLength = 128;

    /// Bytes of an entry on disk.
    static constexpr std::size_t EntryLength = NameLength + 11;

    /// The index's creation counter when the slot was made; wraps.
    std::uint8_t id = 0;
    /// Key that the slot belongs to, or one of the reserved names.
    std::string name;
    /// Offset of the block in the file; readers add up sizes instead.
    std::uint64_t position = 0;
    /// Bytes that the block occupies in the file.
    std::uint32_t size = 0;
    /// Bits of `BlockTransformationType`.
    std::uint8_t transformations = 0;
    /// Always 0; stands in the file all the same.
    std::uint8_t reserved = 0;
    /// Saved for good: the block accepts no more data.
    bool frozen = false;
    /// For index blocks: the buffer was made anew for the final table.
    bool detached = false;
    /// The block's length before transformation, once it is frozen.
    std::uint32_t frozenLength = 0;
    /// The block was compressed and waits to be saved.
    bool compressed = false;
    /// The block's length before that.
    std::uint32_t contentLength = 0;
};

} // namespace Zyl2Wvf

#endif
