#ifndef TESTS_LARGE_NUMBERS_H
#define TESTS_LARGE_NUMBERS_H

#include <cstdint>

namespace Large {

/// Numbers that need not be kept to be compared: each follows from its place.
class Numbers
{
public:
    /// \param seed tells one sequence from another
    /// \param mask the bits that the numbers have; others are 0. With all 32 of them nothing
    ///             compresses.
    explicit Numbers(std::uint32_t seed, std::uint32_t mask = 0xFFFFFFFFU)
        : seed_(seed), mask_(mask)
    {}

    std::uint32_t at(std::uint64_t place) const
    {
        std::uint32_t bits = static_cast<std::uint32_t>(place) * 2654435761U + seed_ * 40503U + 1U;
        bits = (bits ^ bits >> 16U) * 0x7FEB352DU;
        bits = (bits ^ bits >> 15U) * 0x846CA68BU;
        return (bits ^ bits >> 16U) & mask_;
    }

private:
    std::uint32_t seed_;
    std::uint32_t mask_;
};

} // namespace Large

#endif
