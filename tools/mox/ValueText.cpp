#include "ValueText.h"

#include "moxread/LittleEndian.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

template <typename Number>
std::string shortestText(Number value)
{
    std::array<char, 32> text = {};
    auto const result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

std::string uintRangeText(std::vector<std::uint32_t> const& words)
{
    auto const [least, greatest] = std::minmax_element(words.begin(), words.end());
    return "range " + std::to_string(*least) + ".." + std::to_string(*greatest);
}

std::string floatRangeText(std::vector<std::uint32_t> const& words)
{
    float least = INFINITY;
    float greatest = -INFINITY;
    std::size_t notNumbers = 0;
    for (const std::uint32_t word : words) {
        float const value = MoxRead::floatFromBits(word);
        if (std::isnan(value)) {
            ++notNumbers;
            continue;
        }
        least = std::min(least, value);
        greatest = std::max(greatest, value);
    }
    if (notNumbers == words.size())
        return "all NaN";
    const std::string range = "range " + textOf(least) + ".." + textOf(greatest);
    return notNumbers == 0 ? range : range + " and " + std::to_string(notNumbers) + " NaN";
}

} // namespace

std::string textOf(float value)
{
    return shortestText(value);
}

std::string textOf(double value)
{
    return shortestText(value);
}

std::string rangeText(MoxRead::Dataset const& dataset)
{
    if (dataset.words.empty())
        return "empty";
    return dataset.elementType == MoxRead::ElementType::Float ? floatRangeText(dataset.words)
                                                              : uintRangeText(dataset.words);
}
