#include "mpi/FailingNew.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> left{-1};

} // namespace

void failAllocationAfter(long count)
{
    left = count;
}

void* operator new(std::size_t size)
{
    if (left >= 0 && left-- == 0)
        throw std::bad_alloc();
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void* operator new(std::size_t size, std::nothrow_t const& /*nothrow*/) noexcept
{
    return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
