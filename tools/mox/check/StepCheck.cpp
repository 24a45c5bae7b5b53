#include "StepCheck.h"

#include "Kinds.h"

#include "moxread/NodePath.h"
#include "moxread/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <sstream>
#include <variant>

using MoxRead::quoted;
using MoxRead::Variable;

namespace Mox::Check {

namespace {

std::optional<double> numberIn(std::string const& text)
{
    double number = 0;
    char const* const end = text.data() + text.size();
    auto const result = std::from_chars(text.data(), end, number);
    bool const isNumber = result.ec == std::errc() && result.ptr == end;
    return isNumber ? std::optional<double>(number) : std::nullopt;
}

struct NumberIn
{
    std::optional<double> operator()(std::string const& text) const { return numberIn(text); }
    template <typename Number>
    std::optional<double> operator()(Number number) const
    {
        return static_cast<double>(number);
    }
};

std::optional<double> numberOf(MoxRead::Attributes const& attributes, char const* name)
{
    auto const found = attributes.find(name);
    return found == attributes.end() ? std::nullopt : std::visit(NumberIn(), found->second);
}

// The text has digits that a float can't hold.
std::optional<double> timeOf(Variable const& variable)
{
    auto const exact = numberOf(variable.attributes, "TimeText");
    return exact ? exact : numberOf(variable.attributes, "Time");
}

bool areAlike(double left, double right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

std::string timeText(double time)
{
    std::ostringstream text;
    text.precision(9);
    text << time;
    return text.str();
}

} // namespace

void StepCheck::run()
{
    for (MoxRead::Node const& node : model_.nodes()) {
        if (node.geometry() == nullptr)
            continue;
        for (Variable const& variable : node.geometry()->variables)
            if (variable.hasStep())
                collect(node, variable);
    }
    checkPresence();
    for (MoxRead::Node const& node : model_.nodes())
        if (node.geometry() != nullptr)
            checkOrder(node);
}

// A linked dataset has no attributes of its own, and those of its target may be of another step.
void StepCheck::collect(MoxRead::Node const& node, Variable const& variable)
{
    Step& step =
        steps_.emplace(variable.stepName(), Step{&node, &variable, {}, false}).first->second;
    step.hasOther = step.hasOther || variable.attributes.count("Frequency") > 0 ||
                    variable.attributes.count("Value") > 0;
    std::optional<double> const time = timeOf(variable);
    if (!time)
        return;
    if (!step.time) {
        step = {&node, &variable, time, step.hasOther};
        if (!std::isfinite(*time))
            findings_.add(
                {&Kinds::timeNotFinite, &node, &variable, "a finite time", timeText(*time)});
    } else if (!areAlike(*step.time, *time)) {
        tellDifference(step, node, variable, *time);
    }
}

void StepCheck::tellDifference(Step const& step, MoxRead::Node const& node,
                               Variable const& variable, double time)
{
    // Made only where it is shown: where a tree is deep, paths are long.
    std::string const path =
        findings_.isListing(Kinds::timesDiffer)
            ? MoxRead::NodePath::of(model_, MoxRead::ownerOf(model_, *step.node))
            : std::string();
    findings_.add({&Kinds::timesDiffer, &node, &variable,
                   timeText(*step.time) + ", as " + quoted(path) + " has for " +
                       quoted(step.variable->datasetName()),
                   timeText(time)});
}

void StepCheck::checkPresence()
{
    auto const hasTime = [](auto const& entry) { return entry.second.time.has_value(); };
    if (std::none_of(steps_.begin(), steps_.end(), hasTime))
        return;
    for (auto const& [name, step] : steps_) {
        if (!step.time && !step.hasOther)
            findings_.add({&Kinds::noTime, step.node, step.variable,
                           "an attribute Time, as other steps have", "none"});
    }
}

// By dataset, as each of them may have some of the steps only.
void StepCheck::checkOrder(MoxRead::Node const& node)
{
    std::map<std::string, std::pair<std::string, double>> last;
    for (Variable const& variable : node.geometry()->variables) {
        if (!variable.hasStep())
            continue;
        Step const& step = steps_.at(variable.stepName());
        if (!step.time || !std::isfinite(*step.time))
            continue;
        auto const [entry, isFirst] =
            last.try_emplace(variable.datasetName(), variable.stepName(), *step.time);
        auto const& [lastStep, lastTime] = entry->second;
        if (!isFirst && *step.time <= lastTime) {
            findings_.add({&Kinds::timeOrder, &node, &variable,
                           "a time after " + timeText(lastTime) + " of the step " +
                               quoted(lastStep) + " in front of it",
                           timeText(*step.time)});
        }
        entry->second = {variable.stepName(), *step.time};
    }
}

} // namespace Mox::Check
