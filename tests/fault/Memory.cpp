// The linker sends the program's own allocations here instead of to the C library; zlib is linked
// statically, so that its own come here, too. operator new is replaced as the language provides.

#include "fault/Faults.h"

#include <sys/mman.h>

#include <cerrno>
#include <cstddef>
#include <new>

// NOLINTBEGIN(bugprone-reserved-identifier): the linker chooses the names
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* buffer, std::size_t size);
void __real_free(void* buffer);
void* __real_mmap(void* address, std::size_t size, int protection, int flags, int file,
                  off_t offset);
void* __real_mremap(void* buffer, std::size_t oldSize, std::size_t size, int flags, ...);
int __real_munmap(void* buffer, std::size_t size);
void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void* __wrap_realloc(void* buffer, std::size_t size);
void __wrap_free(void* buffer);
void* __wrap_mmap(void* address, std::size_t size, int protection, int flags, int file,
                  off_t offset);
void* __wrap_mremap(void* buffer, std::size_t oldSize, std::size_t size, int flags);
int __wrap_munmap(void* buffer, std::size_t size);
}

namespace {

void* counted(void* memory)
{
    Fault::countAllocation(memory == nullptr ? 0 : 1);
    return memory;
}

void* allocate(std::size_t size)
{
    return Fault::strikes(Fault::Place::Allocation) ? nullptr : counted(__real_malloc(size));
}

} // namespace

extern "C" {
void* __wrap_malloc(std::size_t size)
{
    return allocate(size);
}

void* __wrap_calloc(std::size_t count, std::size_t size)
{
    return Fault::strikes(Fault::Place::Allocation) ? nullptr : counted(__real_calloc(count, size));
}

void* __wrap_realloc(void* buffer, std::size_t size)
{
    if (Fault::strikes(Fault::Place::Allocation))
        return nullptr;
    void* const grown = __real_realloc(buffer, size);
    return buffer == nullptr ? counted(grown) : grown;
}

void __wrap_free(void* buffer)
{
    Fault::countAllocation(buffer == nullptr ? 0 : -1);
    __real_free(buffer);
}

void* __wrap_mmap(void* address, std::size_t size, int protection, int flags, int file,
                  off_t offset)
{
    if (Fault::strikes(Fault::Place::Allocation)) {
        errno = ENOMEM;
        return MAP_FAILED;
    }
    return counted(__real_mmap(address, size, protection, flags, file, offset));
}

void* __wrap_mremap(void* buffer, std::size_t oldSize, std::size_t size, int flags)
{
    if (Fault::strikes(Fault::Place::Allocation)) {
        errno = ENOMEM;
        return MAP_FAILED;
    }
    return __real_mremap(buffer, oldSize, size, flags);
}

int __wrap_munmap(void* buffer, std::size_t size)
{
    Fault::countAllocation(-1);
    return __real_munmap(buffer, size);
}
}

void* operator new(std::size_t size)
{
    void* const memory = allocate(size == 0 ? 1 : size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

// What sorting borrows is given back by the delete below.
void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept
{
    return allocate(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept
{
    __wrap_free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    __wrap_free(memory);
}
// NOLINTEND(bugprone-reserved-identifier)
