#include "Steps.h"

#include "Error.h"
#include "moxread/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

namespace Export {

namespace {

constexpr std::array<char const*, 4> timeAttributes = {"TimeText", "Time", "Frequency", "Value"};

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

} // namespace

void StepOrder::addTimes(Entry& entry, MoxRead::Attributes const& attributes)
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

void StepOrder::add(std::vector<ModelShape> const& shapes)
{
    for (ModelShape const& shape : shapes) {
        for (MoxRead::Variable const& variable : shape.geometry->variables) {
            if (!variable.hasStep())
                continue;
            std::string const name = variable.stepName();
            auto const [place, isNew] = places_.emplace(name, entries_.size());
            if (isNew)
                entries_.push_back({name, {}});
            addTimes(entries_[place->second], variable.attributes);
        }
    }
}

std::optional<double> StepOrder::timeOf(Entry const& entry)
{
    auto const* const found = std::find_if(entry.times.begin(), entry.times.end(),
                                           [](auto const& time) { return time.has_value(); });
    return found == entry.times.end() ? std::nullopt : *found;
}

bool StepOrder::hasTrueTime(Entry const& entry)
{
    return entry.times[0] || entry.times[1];
}

bool StepOrder::haveAllTimes() const
{
    return std::all_of(entries_.begin(), entries_.end(),
                       [](Entry const& entry) { return timeOf(entry).has_value(); });
}

bool StepOrder::areDifferent() const
{
    std::set<double> times;
    for (Entry const& entry : entries_)
        times.insert(*timeOf(entry));
    return times.size() == entries_.size();
}

std::vector<Step> StepOrder::numbered() const
{
    std::vector<Step> steps;
    steps.reserve(entries_.size());
    for (Entry const& entry : entries_)
        steps.push_back({entry.name, static_cast<double>(steps.size() + 1)});
    return steps;
}

std::vector<Step> StepOrder::timed() const
{
    std::vector<Step> steps;
    steps.reserve(entries_.size());
    for (Entry const& entry : entries_)
        steps.push_back({entry.name, *timeOf(entry)});
    // Frequencies and buckling factors stay in the order of the modes.
    if (std::all_of(entries_.begin(), entries_.end(), hasTrueTime))
        std::stable_sort(steps.begin(), steps.end(), [](Step const& left, Step const& right) {
            return left.time < right.time;
        });
    return steps;
}

std::vector<Step> StepOrder::steps(std::optional<std::string>& warning) const
{
    if (entries_.empty())
        return {Step()};
    if (!haveAllTimes())
        return numbered();
    if (!areDifferent()) {
        warning = "Some steps have the same time, so that the steps are numbered instead.";
        return numbered();
    }
    return timed();
}

Step const& findStep(std::vector<Step> const& steps, std::optional<std::string> const& name)
{
    if (!name)
        return steps.back();
    auto const found = std::find_if(steps.begin(), steps.end(),
                                    [&](Step const& step) { return step.name == *name; });
    if (found == steps.end() || name->empty())
        throw Error("There is no step " + MoxRead::quoted(*name) + ".");
    return *found;
}

} // namespace Export
