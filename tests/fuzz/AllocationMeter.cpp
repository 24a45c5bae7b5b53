#include "AllocationMeter.h"

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

// `held` is signed since memory that was allocated before the meter may be freed during its life.
thread_local bool isMetering = false;
thread_local long long held = 0;
thread_local long long most = 0;
thread_local long long limitOfMeter = 0;

void* allocateOrNull(std::size_t size) noexcept
{
    if (isMetering && held + static_cast<long long>(size) > limitOfMeter)
        return nullptr;
    void* const memory = std::malloc(std::max<std::size_t>(size, 1));
    if (isMetering && memory != nullptr) {
        held += static_cast<long long>(::malloc_usable_size(memory));
        most = std::max(most, held);
    }
    return memory;
}

void* allocate(std::size_t size)
{
    void* const memory = allocateOrNull(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void release(void* memory) noexcept
{
    if (isMetering && memory != nullptr)
        held -= static_cast<long long>(::malloc_usable_size(memory));
    std::free(memory);
}

} // namespace

void* operator new(std::size_t size)
{
    return allocate(size);
}

void* operator new[](std::size_t size)
{
    return allocate(size);
}

void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept
{
    return allocateOrNull(size);
}

void* operator new[](std::size_t size, std::nothrow_t const& /*tag*/) noexcept
{
    return allocateOrNull(size);
}

void operator delete(void* memory) noexcept
{
    release(memory);
}

void operator delete[](void* memory) noexcept
{
    release(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    release(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept
{
    release(memory);
}

void operator delete(void* memory, std::nothrow_t const& /*tag*/) noexcept
{
    release(memory);
}

void operator delete[](void* memory, std::nothrow_t const& /*tag*/) noexcept
{
    release(memory);
}

namespace Fuzz {

AllocationMeter::AllocationMeter(std::size_t limit)
{
    limitOfMeter = static_cast<long long>(limit);
    held = 0;
    most = 0;
    isMetering = true;
}

AllocationMeter::~AllocationMeter()
{
    isMetering = false;
}

std::size_t AllocationMeter::peak() const
{
    return static_cast<std::size_t>(most);
}

} // namespace Fuzz
