#include "Zyl2/Wvf/Block.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Wvf/DefaultBlockSize.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace Zyl2Wvf {

namespace {

/// Bytes that a block grows by at least. A step read from the environment when a block grew stays
/// in force for the whole process, even when the variable goes away again. It decides how much
/// memory is asked for, not what is written, so threads need not agree on the moment from which on
/// it is in force.
std::atomic<std::uint32_t> growthStep(10485760U);

std::uint32_t CurrentGrowthStep()
{
    if (auto const size = DefaultBlockSizeFromEnvironment(); size && *size < 4294967295U)
        growthStep.store(static_cast<std::uint32_t>(*size), std::memory_order_relaxed);
    return growthStep.load(std::memory_order_relaxed);
}

[[noreturn]] void RaiseOutOfMemory(unsigned int line, char const* function)
{
    Zyl2::Exception::raise(Zyl2::Exception::MemoryAllocationException(), "Zyl2/Wvf/Block", line,
                           function);
}

} // namespace

Block::Block(Block&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), capacity_(std::exchange(other.capacity_, 0U)),
      length_(std::exchange(other.length_, 0U)), position_(std::exchange(other.position_, 0U))
{}

Block& Block::operator=(Block&& other) noexcept
{
    Block taken(std::move(other));
    std::swap(data_, taken.data_);
    std::swap(capacity_, taken.capacity_);
    std::swap(length_, taken.length_);
    std::swap(position_, taken.position_);
    return *this;
}

Block::~Block()
{
    std::free(data_);
}

void Block::FillAt(void const* const& source, unsigned int const& count, unsigned int& at)
{
    CheckFreeSpaceAndAllocateMemory(count, at);
    if (count != 0)
        std::memcpy(data_ + at, source, count);
    at += count;
}

void Block::SetPosition(PositionType const& position)
{
    if (position > length_)
        Zyl2::Exception::raise(Zyl2::Exception::OutOfBounds("Invalid block position"),
                               "Zyl2/Wvf/Block", __LINE__, BOOST_CURRENT_FUNCTION);
    position_ = position;
}

void Block::AllocateAdditionalMemory(std::size_t const& count)
{
    if (count > SIZE_MAX - capacity_)
        RaiseOutOfMemory(__LINE__, BOOST_CURRENT_FUNCTION);
    std::size_t const capacity = capacity_ + count;
    // realloc may release the buffer when asked for nothing.
    if (capacity == 0)
        return;
    void* const grown = std::realloc(data_, capacity);
    if (grown == nullptr)
        RaiseOutOfMemory(__LINE__, BOOST_CURRENT_FUNCTION);
    data_ = static_cast<unsigned char*>(grown);
    capacity_ = capacity;
}

void Block::Write(std::FILE* stream, bool withLength) const
{
    if (withLength)
        std::fwrite(&length_, sizeof length_, 1, stream);
    if (length_ != 0)
        std::fwrite(data_, 1, length_, stream);
    // The stream's error flag is sticky, so that a write that failed earlier shows here too.
    if (std::ferror(stream) != 0 || std::feof(stream) != 0)
        Zyl2::Exception::raise(Zyl2::Exception::FileWriteException("Unable to write to file"),
                               "Zyl2/Wvf/Block", __LINE__, BOOST_CURRENT_FUNCTION);
}

void Block::Reset() noexcept
{
    Adopt(nullptr, 0, 0);
}

void Block::Adopt(void* buffer, std::size_t capacity, std::uint32_t length) noexcept
{
    std::free(data_);
    data_ = static_cast<unsigned char*>(buffer);
    capacity_ = capacity;
    length_ = length;
    position_ = length;
}

/// Makes the buffer longer than `at + count`.
void Block::Grow(std::uint64_t count, std::uint64_t at)
{
    std::uint64_t const step = CurrentGrowthStep();
    if (count > MaximumLength - at)
        RaiseOutOfMemory(__LINE__, BOOST_CURRENT_FUNCTION);
    AllocateAdditionalMemory(std::max({count, step, at + count - capacity_}));
}

} // namespace Zyl2Wvf
