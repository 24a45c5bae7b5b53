#include "NumberFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace Export {

namespace {

constexpr double greatestPlain = 1e5;
constexpr double leastPlain = 1e-2;
constexpr int countingDigits = 3;

} // namespace

std::string numberFormat(double least, double greatest)
{
    double const size = std::max(std::abs(least), std::abs(greatest));
    bool const isPlain = size == 0 || (size >= leastPlain && size < greatestPlain);
    if (!isPlain)
        return "%.2e";
    double const span = greatest > least ? greatest - least : std::max(size, 1.0);
    int const decimals = countingDigits - 1 - static_cast<int>(std::floor(std::log10(span)));
    return "%." + std::to_string(std::clamp(decimals, 0, 6)) + "f";
}

std::string shortNumber(double value)
{
    std::array<char, 32> text = {};
    std::snprintf(text.data(), text.size(), "%.3g", value);
    return text.data();
}

} // namespace Export
