#include "StepAttributes.h"

#include "NearestFloat.h"

#include <array>
#include <charconv>
#include <cmath>

namespace Exchange {

namespace {

/// The shortest text that reads back as the same number.
std::string exactText(double value)
{
    std::array<char, 32> text{};
    auto const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), end};
}

void addTime(AttributeList& attributes, double time)
{
    float const narrowed = nearestFloat(time);
    attributes.emplace_back("Time", narrowed);
    if (std::isfinite(time) && static_cast<double>(narrowed) != time)
        attributes.emplace_back("TimeText", exactText(time));
}

} // namespace

AttributeList stepAttributes(StepInfo const& step, int number)
{
    AttributeList attributes = {{"StepNumber", number}};
    if (step.time)
        addTime(attributes, *step.time);
    attributes.insert(attributes.end(), step.attributes.begin(), step.attributes.end());
    return attributes;
}

} // namespace Exchange
