#ifndef TESTS_SUPPORT_RANDOMPICKS_H
#define TESTS_SUPPORT_RANDOMPICKS_H

#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace Support {

/// Picks that are the same with every standard library, which the distributions of `std` are not.
class RandomPicks
{
public:
    explicit RandomPicks(std::uint32_t seed) : engine_(seed) {}

    std::size_t below(std::size_t count) { return static_cast<std::size_t>(engine_()) % count; }

    bool chance(std::size_t percent) { return below(100) < percent; }

    template <typename Value>
    Value oneOf(std::vector<Value> const& values)
    {
        return values[below(values.size())];
    }

    template <typename Value>
    void shuffle(std::vector<Value>& values)
    {
        for (std::size_t i = values.size(); i > 1; --i)
            std::swap(values[i - 1], values[below(i)]);
    }

private:
    std::mt19937 engine_;
};

} // namespace Support

#endif
