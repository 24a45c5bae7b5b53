#ifndef ZYL2_UTIL_VERDICT_H
#define ZYL2_UTIL_VERDICT_H

#include <cstdint>
#include <limits>
#include <type_traits>

// Whether values have a place among the 4-byte ones that are stored. Each becomes a verdict, bits
// that tell of what doesn't fit, and many values' verdict is what theirs are or-ed: no value takes
// a branch, and compilers put several of them into one register.

namespace Zyl2Util {

/// What a value of type `From` is stored as.
template <typename From>
using Stored = std::conditional_t<std::is_floating_point_v<From>, float, std::uint32_t>;

template <typename From>
using Verdict = std::conditional_t<sizeof(From) == 4, std::uint32_t, std::uint64_t>;

/// Those of a verdict's bits that are set only by what doesn't fit.
template <typename From>
constexpr Verdict<From> MisfitBits = [] {
    constexpr Verdict<From> All = std::numeric_limits<Verdict<From>>::max();
    if constexpr (std::is_same_v<From, Stored<From>>)
        return Verdict<From>(0);
    else if constexpr (std::is_same_v<From, double> || std::is_same_v<From, std::int32_t>)
        return All ^ (All >> 1U);
    else
        return All << 32U;
}();

/// \param bits of the value
template <typename From>
Verdict<From> Judge(Verdict<From> bits)
{
    if constexpr (std::is_same_v<From, double>) {
        // Without the sign's, bits are in the order of the magnitudes. The first that is rounded to
        // infinity is halfway between the largest float and the next that there would be.
        constexpr std::uint64_t FirstInfinite = 0x47EFFFFFF0000000U;
        constexpr std::uint64_t Infinity = 0x7FF0000000000000U;
        std::uint64_t const magnitude = bits & ~MisfitBits<From>;
        return ~(magnitude - FirstInfinite) & (magnitude - Infinity);
    } else {
        return bits;
    }
}

} // namespace Zyl2Util

#endif
