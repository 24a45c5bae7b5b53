#include "StepUse.h"

#include "moxread/NodeVisit.h"

#include <unordered_map>

namespace Mox {

namespace {

// A linked dataset has no attributes of its own, and those of its target tell of another step.
void addTimes(StepUse& step, MoxRead::Variable const& variable)
{
    for (char const* const name : {"Time", "Frequency", "Value"}) {
        auto const found = variable.attributes.find(name);
        if (found != variable.attributes.end())
            step.times.emplace(*found);
    }
}

} // namespace

std::vector<StepUse> stepsOf(MoxRead::Model const& model, MoxRead::Node const& first)
{
    std::vector<StepUse> steps;
    std::unordered_map<std::string, std::size_t> places;
    auto const add = [&](MoxRead::Variable const& variable) {
        std::string const name = variable.stepName();
        auto const place = places.emplace(name, steps.size());
        if (place.second)
            steps.push_back({name, 0, {}});
        StepUse& step = steps[place.first->second];
        ++step.datasets;
        addTimes(step, variable);
    };
    MoxRead::visitNodes(model, first, [&](MoxRead::Node const& node, std::size_t) {
        if (node.geometry() == nullptr)
            return;
        for (MoxRead::Variable const& variable : node.geometry()->variables)
            if (variable.hasStep())
                add(variable);
    });
    return steps;
}

} // namespace Mox
