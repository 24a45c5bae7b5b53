#ifndef TESTS_CONTAINER_FAILINGALLOCATION_H
#define TESTS_CONTAINER_FAILINGALLOCATION_H

#include <cstddef>

namespace Support {

/// While one lives, one allocation of this program finds no memory.
class FailingAllocation
{
public:
    /// \param allocation which one fails: 0 for the next
    explicit FailingAllocation(std::size_t allocation);
    FailingAllocation(FailingAllocation const&) = delete;
    FailingAllocation& operator=(FailingAllocation const&) = delete;
    ~FailingAllocation();

    /// Whether the allocation was asked for, and so has failed.
    bool HasFailed() const;
};

} // namespace Support

#endif
