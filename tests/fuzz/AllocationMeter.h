#ifndef TESTS_FUZZ_ALLOCATIONMETER_H
#define TESTS_FUZZ_ALLOCATIONMETER_H

#include <cstddef>
#include <limits>

namespace Fuzz {

/// Measures how many bytes this thread's `new` holds at most, for as long as the meter lives. One
/// at a time.
class AllocationMeter
{
public:
    /// \param limit what is held at once stays below that, because `new` fails
    explicit AllocationMeter(std::size_t limit = std::numeric_limits<std::size_t>::max() / 2);
    ~AllocationMeter();
    AllocationMeter(AllocationMeter const&) = delete;
    AllocationMeter& operator=(AllocationMeter const&) = delete;

    /// The most bytes that were held at once since the meter was made.
    std::size_t peak() const;
};

} // namespace Fuzz

#endif
