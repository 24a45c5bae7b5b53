#include "FailingAllocation.h"

#include <sys/mman.h>

#include <cerrno>
#include <cstdlib>
#include <new>

namespace {

long allocationsLeft = -1;
bool hasFailed = false;

bool MustFail()
{
    if (allocationsLeft < 0 || allocationsLeft-- > 0)
        return false;
    hasFailed = true;
    errno = ENOMEM;
    return true;
}

} // namespace

// The linker sends the program's own calls here instead of to the C library.
// NOLINTBEGIN(bugprone-reserved-identifier): the linker chooses the names
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* buffer, std::size_t size);
void* __real_mmap(void* address, std::size_t size, int protection, int flags, int file,
                  off_t offset);
void* __real_mremap(void* buffer, std::size_t oldSize, std::size_t size, int flags, ...);
void* __wrap_malloc(std::size_t size);
void* __wrap_realloc(void* buffer, std::size_t size);
void* __wrap_mmap(void* address, std::size_t size, int protection, int flags, int file,
                  off_t offset);
void* __wrap_mremap(void* buffer, std::size_t oldSize, std::size_t size, int flags);

void* __wrap_malloc(std::size_t size)
{
    return MustFail() ? nullptr : __real_malloc(size);
}

void* __wrap_realloc(void* buffer, std::size_t size)
{
    return MustFail() ? nullptr : __real_realloc(buffer, size);
}

void* __wrap_mmap(void* address, std::size_t size, int protection, int flags, int file,
                  off_t offset)
{
    return MustFail() ? MAP_FAILED : __real_mmap(address, size, protection, flags, file, offset);
}

void* __wrap_mremap(void* buffer, std::size_t oldSize, std::size_t size, int flags)
{
    return MustFail() ? MAP_FAILED : __real_mremap(buffer, oldSize, size, flags);
}
}

void* operator new(std::size_t size)
{
    void* const memory = MustFail() ? nullptr : __real_malloc(size == 0 ? 1 : size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}
// NOLINTEND(bugprone-reserved-identifier)

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

namespace Support {

FailingAllocation::FailingAllocation(std::size_t allocation)
{
    hasFailed = false;
    allocationsLeft = static_cast<long>(allocation);
}

FailingAllocation::~FailingAllocation()
{
    allocationsLeft = -1;
}

bool FailingAllocation::HasFailed() const // NOLINT: asks about the one that lives
{
    return hasFailed;
}

} // namespace Support
