#include "ValueText.h"

#include "moxread/LittleEndian.h"
#include "moxread/Text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <variant>

namespace Mox {

namespace {

template <typename Number>
std::string shortestText(Number value)
{
    std::array<char, 32> text = {};
    auto const result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

struct AttributeText
{
    std::string operator()(std::uint32_t value) const { return std::to_string(value); }
    std::string operator()(float value) const { return textOf(value) + " (float)"; }
    std::string operator()(double value) const { return textOf(value) + " (double)"; }
    std::string operator()(std::string const& value) const { return MoxRead::quoted(value); }
};

} // namespace

double numberOf(std::uint32_t word, bool isFloat)
{
    return isFloat ? static_cast<double>(MoxRead::floatFromBits(word)) : word;
}

std::string textOf(float value)
{
    return shortestText(value);
}

std::string textOf(double value)
{
    return shortestText(value);
}

std::string roundedTextOf(double value)
{
    std::array<char, 32> text = {};
    std::snprintf(text.data(), text.size(), "%.6g", value);
    return text.data();
}

std::string textOf(MoxRead::AttributeValue const& value)
{
    return std::visit(AttributeText(), value);
}

ValueRange ValueRange::of(MoxRead::Dataset const& dataset)
{
    ValueRange range;
    range.isFloat = dataset.elementType == MoxRead::ElementType::Float;
    range.count = dataset.words.size();
    range.least = std::numeric_limits<double>::infinity();
    range.greatest = -range.least;
    for (std::uint32_t const word : dataset.words) {
        double const value = numberOf(word, range.isFloat);
        range.notNumbers += std::isnan(value) ? 1 : 0;
        // NaN is neither less nor greater.
        range.least = value < range.least ? value : range.least;
        range.greatest = value > range.greatest ? value : range.greatest;
    }
    return range;
}

std::string ValueRange::text() const
{
    if (count == 0)
        return "empty";
    if (!hasNumbers())
        return "all NaN";
    auto const numberText = [this](double value) {
        return isFloat ? textOf(static_cast<float>(value))
                       : std::to_string(static_cast<std::uint32_t>(value));
    };
    std::string const range = "range " + numberText(least) + ".." + numberText(greatest);
    return notNumbers == 0 ? range : range + " and " + std::to_string(notNumbers) + " NaN";
}

} // namespace Mox
