#include "DatasetSearch.h"

#include "moxread/NodePath.h"
#include "moxread/Text.h"

#include <stdexcept>
#include <vector>

namespace Mox {

using MoxRead::quoted;
using MoxRead::Variable;

namespace {

constexpr std::size_t greatestListedCount = 10;

std::vector<Variable const*> datasetsOf(MoxRead::Node const& geometry, std::string const& name)
{
    std::vector<Variable const*> found;
    for (Variable const& variable : geometry.geometry()->variables)
        if (variable.datasetName() == name)
            found.push_back(&variable);
    return found;
}

std::string stepList(std::vector<Variable const*> const& datasets)
{
    std::string list;
    for (std::size_t i = 0; i < datasets.size() && i < greatestListedCount; ++i) {
        list += list.empty() ? "" : ", ";
        list += datasets[i]->hasStep() ? quoted(datasets[i]->stepName()) : "no step";
    }
    if (datasets.size() > greatestListedCount)
        list += " and " + std::to_string(datasets.size() - greatestListedCount) + " more";
    return list;
}

std::string refusal(std::string const& place, std::string const& dataset,
                    std::optional<std::string> const& step,
                    std::vector<Variable const*> const& found)
{
    if (found.empty())
        return place + " has no dataset " + quoted(dataset);
    std::string const steps = stepList(found);
    if (!step)
        return place + " has " + quoted(dataset) + " for steps only: " + steps;
    return place + " has no " + quoted(dataset) + " for the step " + quoted(*step) +
           ", but for: " + steps;
}

bool isOf(Variable const& variable, std::optional<std::string> const& step)
{
    return step ? variable.hasStep() && variable.stepName() == *step : !variable.hasStep();
}

} // namespace

Variable const& findDataset(MoxRead::Model const& model, MoxRead::Node const& geometry,
                            std::string const& dataset, std::optional<std::string> const& step)
{
    std::vector<Variable const*> const found = datasetsOf(geometry, dataset);
    for (Variable const* variable : found)
        if (isOf(*variable, step))
            return *variable;
    throw std::runtime_error(
        refusal(MoxRead::quoted(MoxRead::NodePath::of(model, MoxRead::ownerOf(model, geometry))),
                dataset, step, found));
}

} // namespace Mox
