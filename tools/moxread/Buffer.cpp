#include "moxread/Buffer.h"

#include <algorithm>
#include <utility>

#include <sys/mman.h>

namespace MoxRead {

namespace {

constexpr std::size_t largePage = std::size_t{2} << 20U;

// To touch a block's memory for the first time takes as long as to inflate into it, unless its
// pages are large. That they are is a wish, which the system need not grant.
void wishForLargePages(std::uint8_t* bytes, std::size_t size)
{
    std::size_t const behindBorder = reinterpret_cast<std::uintptr_t>(bytes) % largePage;
    std::size_t const skipped = (largePage - behindBorder) % largePage;
    if (size >= skipped + largePage)
        ::madvise(bytes + skipped, (size - skipped) / largePage * largePage, MADV_HUGEPAGE);
}

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
        // Never both at a time.
        *this = Buffer();
        bytes_ = allocated(size);
        capacity_ = size;
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
