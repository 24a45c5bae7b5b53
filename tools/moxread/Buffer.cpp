#include "moxread/Buffer.h"

#include "moxread/LargePages.h"

#include <algorithm>
#include <utility>

namespace MoxRead {

namespace {

std::unique_ptr<std::uint8_t[]> allocated(std::size_t size)
{
    // What std::make_unique makes is set to zero first, which takes as long as half of inflating.
    std::unique_ptr<std::uint8_t[]> bytes(new std::uint8_t[size]);
    wishForLargePages(bytes.get(), size);
    return bytes;
}

} // namespace

Buffer& Buffer::operator=(Buffer&& other) noexcept
{
    Buffer(std::move(other)).swap(*this);
    return *this;
}

void Buffer::reset(std::size_t size)
{
    if (size > capacity_) {
        // Blocks are hardly ever of one length: without some room to spare, each that is a little
        // longer would have its memory touched for the first time again. What is not used of it is
        // address space alone.
        std::size_t const capacity = std::max(size, 2 * capacity_);
        // The old memory goes first, so that the two are never held at the same time.
        *this = Buffer();
        bytes_ = allocated(capacity);
        capacity_ = capacity;
    }
    size_ = size;
}

void Buffer::resize(std::size_t size)
{
    if (size > capacity_) {
        auto larger = allocated(size);
        std::copy_n(bytes_.get(), size_, larger.get());
        bytes_ = std::move(larger);
        capacity_ = size;
    }
    size_ = size;
}

void Buffer::swap(Buffer& other) noexcept
{
    std::swap(bytes_, other.bytes_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
}

} // namespace MoxRead
