#include "Steps.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <set>

namespace Export {

namespace {

constexpr std::array<char const*, 4> timeAttributes = {"TimeText", "Time", "Frequency", "Value"};

/// All that the shapes' datasets say of one step.
struct StepEntry
{
    std::string name;
    /// By the place in `timeAttributes`; the first dataset that has one is believed.
    std::array<std::optional<double>, timeAttributes.size()> times;
};

std::optional<double> numberIn(MoxRead::AttributeValue const& value)
{
    if (auto const* const text = std::get_if<std::string>(&value)) {
        double number = 0;
        char const* const end = text->data() + text->size();
        auto const result = std::from_chars(text->data(), end, number);
        bool const isNumber = result.ec == std::errc() && result.ptr == end;
        return isNumber ? std::optional<double>(number) : std::nullopt;
    }
    if (auto const* const number = std::get_if<float>(&value))
        return static_cast<double>(*number);
    if (auto const* const number = std::get_if<double>(&value))
        return *number;
    return static_cast<double>(std::get<std::uint32_t>(value));
}

void addTimes(StepEntry& entry, MoxRead::Attributes const& attributes)
{
    for (std::size_t i = 0; i < timeAttributes.size(); ++i) {
        auto const found = attributes.find(timeAttributes[i]);
        if (!entry.times[i] && found != attributes.end()) {
            std::optional<double> const time = numberIn(found->second);
            if (time && std::isfinite(*time))
                entry.times[i] = time;
        }
    }
}

std::vector<StepEntry> entriesOf(std::vector<ModelShape> const& shapes)
{
    std::vector<StepEntry> entries;
    std::map<std::string, std::size_t> places;
    for (ModelShape const& shape : shapes) {
        for (MoxRead::Variable const& variable : shape.geometry->variables) {
            if (!variable.hasStep())
                continue;
            std::string const name = variable.stepName();
            auto const [place, isNew] = places.emplace(name, entries.size());
            if (isNew)
                entries.push_back({name, {}});
            addTimes(entries[place->second], variable.attributes);
        }
    }
    return entries;
}

std::optional<double> timeOf(StepEntry const& entry)
{
    auto const* const found = std::find_if(entry.times.begin(), entry.times.end(),
                                           [](auto const& time) { return time.has_value(); });
    return found == entry.times.end() ? std::nullopt : *found;
}

bool hasTrueTime(StepEntry const& entry)
{
    return entry.times[0] || entry.times[1];
}

bool haveAll(std::vector<StepEntry> const& entries)
{
    return std::all_of(entries.begin(), entries.end(),
                       [](StepEntry const& entry) { return timeOf(entry).has_value(); });
}

bool areDifferent(std::vector<StepEntry> const& entries)
{
    std::set<double> times;
    for (StepEntry const& entry : entries)
        times.insert(*timeOf(entry));
    return times.size() == entries.size();
}

std::vector<Step> numbered(std::vector<StepEntry> const& entries)
{
    std::vector<Step> steps;
    steps.reserve(entries.size());
    for (StepEntry const& entry : entries)
        steps.push_back({entry.name, static_cast<double>(steps.size() + 1)});
    return steps;
}

std::vector<Step> timed(std::vector<StepEntry> const& entries)
{
    std::vector<Step> steps;
    steps.reserve(entries.size());
    for (StepEntry const& entry : entries)
        steps.push_back({entry.name, *timeOf(entry)});
    // Frequencies and buckling factors stay in the order of the modes.
    if (std::all_of(entries.begin(), entries.end(), hasTrueTime))
        std::stable_sort(steps.begin(), steps.end(), [](Step const& left, Step const& right) {
            return left.time < right.time;
        });
    return steps;
}

} // namespace

std::vector<Step> stepsOf(std::vector<ModelShape> const& shapes,
                          std::optional<std::string>& warning)
{
    std::vector<StepEntry> const entries = entriesOf(shapes);
    if (!haveAll(entries))
        return numbered(entries);
    if (!areDifferent(entries)) {
        warning = "Some steps have the same time, so that the steps are numbered instead.";
        return numbered(entries);
    }
    return timed(entries);
}

} // namespace Export
