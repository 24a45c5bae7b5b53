#ifndef TESTS_FAULT_SHAREDNUMBER_H
#define TESTS_FAULT_SHAREDNUMBER_H

#include <atomic>
#include <cstddef>
#include <new>

#include <sys/mman.h>

namespace Fault {

/// A number that a process tells until it is killed.
class SharedNumber
{
public:
    SharedNumber()
        : place_(::mmap(nullptr, sizeof(std::atomic<std::size_t>), PROT_READ | PROT_WRITE,
                        MAP_SHARED | MAP_ANONYMOUS, -1, 0))
    {
        new (place_) std::atomic<std::size_t>(0);
    }
    ~SharedNumber() { ::munmap(place_, sizeof(std::atomic<std::size_t>)); }
    SharedNumber(SharedNumber const&) = delete;
    SharedNumber& operator=(SharedNumber const&) = delete;

    std::atomic<std::size_t>& get() const
    {
        return *static_cast<std::atomic<std::size_t>*>(place_);
    }

private:
    void* place_;
};

} // namespace Fault

#endif
