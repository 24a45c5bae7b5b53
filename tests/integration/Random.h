#ifndef TESTS_INTEGRATION_RANDOM_H
#define TESTS_INTEGRATION_RANDOM_H

#include <cstddef>
#include <cstdint>
#include <random>

namespace Integration {

/// Repeatable random numbers, the same on every platform for the same seed.
class Random
{
public:
    explicit Random(std::uint32_t seed);

    /// Any 32 bits.
    std::uint32_t word();
    /// A number from 0 up to, but without, `end`.
    std::size_t below(std::size_t end);
    bool chance(unsigned int percent);
    /// A number from -1000 to 1000 that a float holds exactly.
    float number();

    template <typename ContainerT>
    typename ContainerT::value_type const& pick(ContainerT const& from)
    {
        return from[below(from.size())];
    }

private:
    std::mt19937 engine_;
};

} // namespace Integration

#endif
