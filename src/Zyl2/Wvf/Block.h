#ifndef ZYL2_WVF_BLOCK_H
#define ZYL2_WVF_BLOCK_H

#include "Zyl2/Util/Buffer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace Zyl2Wvf {

/// Growable byte buffer that collects one block of the container file until it is saved.
///
/// Bytes are written at a cursor; the length is the high-water mark of what was written, and is
/// what is saved.
class Block
{
public:
    using PositionType = std::uint32_t;

    /// A block's length is stored in 32 bits.
    static constexpr std::uint64_t MaximumLength = 4294967295U;

    Block() noexcept = default;
    Block(Block&& other) noexcept;
    Block& operator=(Block&& other) noexcept;
    Block(Block const&) = delete;
    Block& operator=(Block const&) = delete;
    ~Block() = default;

    /// Copies `count` bytes to offset `at`, growing first if needed, and advances `at`.
    /// \throws MemoryAllocationException the buffer can't grow, or would pass `MaximumLength`; the
    ///         block is unchanged
    void FillAt(void const* const& source, unsigned int const& count, unsigned int& at);

    /// Copies `count` bytes to the cursor, advances it, and raises the length to it.
    /// \throws MemoryAllocationException as `FillAt`
    void Append(void const* source, std::size_t count)
    {
        unsigned char* const place = Extend(count);
        if (count != 0)
            std::memcpy(place, source, count);
    }

    /// Makes room for `count` bytes at the cursor, advances it, raises the length to it, and gives
    /// the place that the caller has to fill. Valid until the block is written to again.
    /// \throws MemoryAllocationException as `FillAt`
    unsigned char* Extend(std::size_t count)
    {
        CheckFreeSpaceAndAllocateMemory(count, position_);
        unsigned char* const place = buffer_.GetData() + position_;
        position_ += static_cast<PositionType>(count);
        length_ = std::max(length_, position_);
        return place;
    }

    /// Takes back the last `count` bytes, with the cursor at their end.
    void Retract(std::size_t count) noexcept
    {
        position_ -= static_cast<PositionType>(count);
        length_ = position_;
    }

    /// Moves the cursor.
    /// \throws OutOfBounds "Invalid block position": past the length; the cursor is unchanged
    void SetPosition(PositionType const& position);

    /// Grows the buffer by `count` bytes.
    /// \throws MemoryAllocationException the buffer is unchanged
    void AllocateAdditionalMemory(std::size_t const& count);

    /// Writes the block to the stream, after its length as 4 bytes if asked for.
    /// \throws FileWriteException "Unable to write to file"
    void Write(std::FILE* stream, bool withLength) const;

    /// Releases the buffer; the block is empty again.
    void Reset() noexcept;

    /// Gives the buffer away; the block is empty again.
    Zyl2Util::Buffer Release() noexcept;

    /// Gives memory behind the content back, as far as that costs nothing.
    void ReleaseUnused() noexcept { buffer_.Shrink(length_); }

    /// Takes a buffer over in place of its own; `length` bytes of it are the content. The cursor
    /// goes to the end.
    void Adopt(Zyl2Util::Buffer buffer, std::uint32_t length) noexcept;

    Zyl2Util::Buffer const& GetBuffer() const noexcept { return buffer_; }
    unsigned char const* GetData() const noexcept { return buffer_.GetData(); }
    std::uint64_t GetCapacity() const noexcept { return buffer_.GetSize(); }
    std::uint32_t GetLength() const noexcept { return length_; }
    PositionType GetPosition() const noexcept { return position_; }

private:
    void CheckFreeSpaceAndAllocateMemory(std::uint64_t count, std::uint64_t at)
    {
        // A buffer that would be filled to its last byte grows too.
        if (count > MaximumLength - at || at + count >= buffer_.GetSize())
            Grow(count, at);
    }
    void Grow(std::uint64_t count, std::uint64_t at);

    Zyl2Util::Buffer buffer_;
    std::uint32_t length_ = 0;
    PositionType position_ = 0;
};

} // namespace Zyl2Wvf

#endif
