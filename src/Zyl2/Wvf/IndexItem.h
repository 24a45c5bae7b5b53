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

    /// Where the slot's block is in its life.
    enum class State : std::uint8_t
    {
        /// Takes bytes. A block that was saved without being frozen is open again, and empty.
        Open,
        /// A thread has the content, and compresses it.
        BeingCompressed,
        /// Was compressed and waits to be saved.
        Compressed,
        /// Was saved for good: takes no more bytes.
        Frozen,
        /// Frozen, and for index blocks: holds the final table, in a buffer of its own.
        Rewritten
    };

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
    State state = State::Open;
    /// The block's length before it was compressed or frozen; while it is open the block knows.
    std::uint32_t contentLength = 0;

    bool IsFrozen() const { return state >= State::Frozen; }
    bool IsOpen() const { return state == State::Open; }

    /// The block is with a thread for as long as this lasts.
    void GiveAway(std::uint32_t length)
    {
        state = State::BeingCompressed;
        contentLength = length;
    }

    void Compress(std::uint32_t length)
    {
        state = State::Compressed;
        contentLength = length;
    }
    void Freeze(std::uint32_t length)
    {
        state = State::Frozen;
        contentLength = length;
    }
};

} // namespace Zyl2Wvf

#endif
