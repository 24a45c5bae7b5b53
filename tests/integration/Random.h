#ifndef TESTS_INTEGRATION_RANDOM_H
#define TESTS_INTEGRATION_RANDOM_H

#include <cstddef>
#include <cstdint>
#include <random>

namespace Integration {

/// Repeatable random numbers, the same on every platform for the same seed or the same bytes.
class Random
{
public:
    explicit Random(std::uint32_t seed);

    /// Takes its numbers from bytes, front to back, and goes on with zeros. The bytes stay the
    /// caller's.
    Random(std::uint8_t const* bytes, std::size_t count);

    /// Whether all given bytes were taken; never so for numbers from a seed.
    bool isExhausted() const;

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
    std::uint32_t wordFromBytes(std::size_t size);

    std::mt19937 engine_;
    bool hasBytes_ = false;
    std::uint8_t const* next_ = nullptr;
    std::uint8_t const* end_ = nullptr;
};

} // namespace Integration

#endif
