#include "Zyl2/Wvf/Block.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Wvf/DefaultBlockSize.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <utility>

namespace Zyl2Wvf {

namespace {

namespace BlockSites = Zyl2::Exception::Sites::Block;
using Zyl2::Exception::raise;

/// Bytes that a block grows by at least. A step that was read from the environment stays in force
/// for the whole process, even when the variable goes away again. It is read when a block grows and
/// not at every write, though a host might set the variable and take it away between two growths:
/// walking through the environment costs more than most writes, and the step decides how much
/// memory is asked for, not what is written. For the same reason threads need not agree on the
/// moment from which on it is in force.
std::atomic<std::uint32_t> growthStep(10485760U);

std::uint32_t CurrentGrowthStep()
{
    if (auto const size = DefaultBlockSizeFromEnvironment(); size && *size < 4294967295U)
        growthStep.store(static_cast<std::uint32_t>(*size), std::memory_order_relaxed);
    return growthStep.load(std::memory_order_relaxed);
}

} // namespace

Block::Block(Block&& other) noexcept
    : buffer_(std::move(other.buffer_)), length_(std::exchange(other.length_, 0U)),
      position_(std::exchange(other.position_, 0U))
{}

Block& Block::operator=(Block&& other) noexcept
{
    buffer_ = std::move(other.buffer_);
    length_ = std::exchange(other.length_, 0U);
    position_ = std::exchange(other.position_, 0U);
    return *this;
}

void Block::FillAt(void const* const& source, unsigned int const& count, unsigned int& at)
{
    CheckFreeSpaceAndAllocateMemory(count, at);
    if (count != 0)
        std::memcpy(buffer_.GetData() + at, source, count);
    at += count;
}

void Block::SetPosition(PositionType const& position)
{
    if (position > length_)
        raise(BlockSites::PositionPastEnd);
    position_ = position;
}

void Block::AllocateAdditionalMemory(std::size_t const& count)
{
    if (count > SIZE_MAX - buffer_.GetSize() || !buffer_.Grow(buffer_.GetSize() + count))
        raise(BlockSites::NoMemory);
}

void Block::Write(std::FILE* stream, bool withLength) const
{
    if (withLength)
        std::fwrite(&length_, sizeof length_, 1, stream);
    if (length_ != 0)
        std::fwrite(buffer_.GetData(), 1, length_, stream);
    // The stream's error flag is sticky, so that a write that failed earlier shows here too.
    if (std::ferror(stream) != 0 || std::feof(stream) != 0)
        raise(BlockSites::WriteFailed);
}

void Block::Reset() noexcept
{
    Adopt(Zyl2Util::Buffer(), 0);
}

Zyl2Util::Buffer Block::Release() noexcept
{
    Zyl2Util::Buffer released = std::move(buffer_);
    Reset();
    return released;
}

void Block::Adopt(Zyl2Util::Buffer buffer, std::uint32_t length) noexcept
{
    buffer_ = std::move(buffer);
    length_ = length;
    position_ = length;
}

/// Makes the buffer longer than `at + count`.
void Block::Grow(std::uint64_t count, std::uint64_t at)
{
    std::uint64_t const step = CurrentGrowthStep();
    if (count > MaximumLength - at)
        raise(BlockSites::TooLong);
    AllocateAdditionalMemory(std::max({count, step, at + count - buffer_.GetSize()}));
    // Decided by the bytes in use and not by the capacity, which is large in small models, too.
    if (at + count >= Zyl2Util::Buffer::LargeSize)
        buffer_.PreferHugePages();
}

} // namespace Zyl2Wvf
