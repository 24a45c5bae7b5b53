#include "Zyl2/Util/Buffer.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace Zyl2Util {

namespace {

unsigned char* Map(std::size_t size) noexcept
{
    void* const pages =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return pages == MAP_FAILED ? nullptr : static_cast<unsigned char*>(pages);
}

/// Changes the size of mapped pages. Null when there is no memory; the old pages stay then.
unsigned char* Remap(unsigned char* data, std::size_t oldSize, std::size_t size) noexcept
{
#ifdef MREMAP_MAYMOVE
    void* const pages = mremap(data, oldSize, size, MREMAP_MAYMOVE);
    return pages == MAP_FAILED ? nullptr : static_cast<unsigned char*>(pages);
#else
    unsigned char* const pages = Map(size);
    if (pages == nullptr)
        return nullptr;
    std::memcpy(pages, data, oldSize);
    munmap(data, oldSize);
    return pages;
#endif
}

/// Moves the content of a small buffer, which comes from `malloc`, to mapped pages.
unsigned char* MoveToPages(unsigned char* data, std::size_t oldSize, std::size_t size) noexcept
{
    unsigned char* const pages = Map(size);
    if (pages == nullptr)
        return nullptr;
    if (oldSize != 0)
        std::memcpy(pages, data, oldSize);
    std::free(data);
    return pages;
}

} // namespace

Buffer::Buffer(Buffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0U)),
      isBorrowed_(std::exchange(other.isBorrowed_, false))
{}

Buffer& Buffer::operator=(Buffer&& other) noexcept
{
    Buffer taken(std::move(other));
    std::swap(data_, taken.data_);
    std::swap(size_, taken.size_);
    std::swap(isBorrowed_, taken.isBorrowed_);
    return *this;
}

Buffer::~Buffer()
{
    if (isBorrowed_)
        return;
    if (IsMapped())
        munmap(data_, size_);
    else
        std::free(data_);
}

Buffer Buffer::Borrow(unsigned char* data, std::size_t size) noexcept
{
    Buffer borrowed;
    borrowed.data_ = data;
    borrowed.size_ = size;
    borrowed.isBorrowed_ = true;
    return borrowed;
}

bool Buffer::Grow(std::size_t size) noexcept
{
    // realloc may release the buffer when asked for nothing.
    if (size <= size_)
        return true;
    if (isBorrowed_)
        return false;
    unsigned char* grown = nullptr;
    if (size < LargeSize)
        grown = static_cast<unsigned char*>(std::realloc(data_, size));
    else
        grown = IsMapped() ? Remap(data_, size_, size) : MoveToPages(data_, size_, size);
    if (grown == nullptr)
        return false;
    data_ = grown;
    size_ = size;
    return true;
}

void Buffer::Shrink(std::size_t size) noexcept
{
    std::size_t const kept = std::max(size, LargeSize);
    if (kept >= size_ || isBorrowed_)
        return;
#ifdef MREMAP_MAYMOVE
    if (mremap(data_, size_, kept, 0) == data_)
        size_ = kept;
#endif
}

void Buffer::PreferHugePages() noexcept
{
#ifdef MADV_HUGEPAGE
    // The system may ignore this advice and use small pages. It is given for the whole buffer,
    // because mremap can't move pages of two kinds as one.
    if (IsMapped())
        static_cast<void>(madvise(data_, size_, MADV_HUGEPAGE));
#endif
}

} // namespace Zyl2Util
