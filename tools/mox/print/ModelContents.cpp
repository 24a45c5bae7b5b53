#include "ModelContents.h"

#include "moxread/NodeVisit.h"

#include <cstdint>
#include <unordered_set>
#include <utility>

namespace Mox {

using MoxRead::Variable;

ModelContents::ModelContents(MoxRead::Model& model, MoxRead::Node const& first,
                             Common::Progress& progress)
    : model_(model), first_(first), steps_(stepsOf(model, first))
{
    if (hasValues())
        readRanges(progress);
}

ValueRange const& ModelContents::rangeOf(Variable const& variable) const
{
    return ranges_.at(&model_.resolve(variable));
}

// Each stored variable is listed once, also when several datasets share its values.
MoxRead::Model::Variables ModelContents::storedVariables() const
{
    std::unordered_set<Variable const*> known;
    MoxRead::Model::Variables variables;
    MoxRead::visitNodes(model_, first_, [&](MoxRead::Node const& node, std::size_t) {
        if (node.geometry() == nullptr)
            return;
        for (Variable const& variable : node.geometry()->variables) {
            Variable const& stored = model_.resolve(variable);
            if (known.insert(&stored).second)
                variables.push_back(&stored);
        }
    });
    return variables;
}

void ModelContents::readRanges(Common::Progress& progress)
{
    MoxRead::Model::Variables variables = storedVariables();
    std::size_t const all = variables.size();
    std::size_t done = 0;
    model_.read(std::move(variables),
                [&](MoxRead::Model::Variables const& alike, MoxRead::Dataset const& dataset) {
                    ValueRange const range = ValueRange::of(dataset);
                    for (Variable const* variable : alike)
                        ranges_.emplace(variable, range);
                    progress.show(done += alike.size(), all);
                });
}

} // namespace Mox
