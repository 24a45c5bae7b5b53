#include "Zyl2/Util/Misfit.h"

#include "Zyl2/Util/StridedElements.h"
#include "Zyl2/Util/Verdict.h"

#include <array>
#include <charconv>

namespace Zyl2Util {

namespace {

template <typename From>
std::string InDigits(From value)
{
    std::array<char, 32> digits{};
    auto const written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), written.ptr};
}

template <typename From>
std::optional<Misfit> FindMisfitAmong(StridedValues const& values)
{
    char const* const range = AreStoredAsFloats(values) ? "a float" : "0 to 4294967295";
    for (std::size_t row = 0; row < values.rows; ++row)
        for (std::size_t column = 0; column < values.width; ++column) {
            unsigned char const* const place = PlaceOf(values, row, column);
            if ((Judge<From>(LoadFrom<Verdict<From>>(place)) & MisfitBits<From>) != 0)
                return Misfit{row, column, InDigits(LoadFrom<From>(place)), range};
        }
    return std::nullopt;
}

} // namespace

std::optional<Misfit> FindMisfit(StridedValues const& values)
{
    return WithElement(values.element,
                       [&](auto type) { return FindMisfitAmong<decltype(type)>(values); });
}

} // namespace Zyl2Util
