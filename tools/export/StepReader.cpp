#include "StepReader.h"

#include "Error.h"
#include "moxread/Text.h"

#include <algorithm>

namespace Export {

namespace {

using ShapeGroups = std::vector<std::vector<ModelShape const*>>;

ShapeGroups groupsOf(std::vector<ModelShape> const& shapes, StepReader::Layout layout)
{
    ShapeGroups groups;
    if (layout == StepReader::Layout::Joined)
        groups.emplace_back();
    for (ModelShape const& shape : shapes) {
        if (layout == StepReader::Layout::Apart)
            groups.emplace_back();
        groups.back().push_back(&shape);
    }
    return groups;
}

} // namespace

StepReader::StepReader(std::string const& path, MoxRead::ReadOptions const& options)
    : model_(path, options), shapes_(shapesOf(model_))
{
    std::optional<std::string> warning;
    steps_ = stepsOf(shapes_, warning);
    if (warning)
        warnings_.add(*warning);
    if (steps_.empty())
        steps_.emplace_back();
}

Step const& StepReader::step(std::optional<std::string> const& name) const
{
    if (!name)
        return steps_.back();
    auto const found = std::find_if(steps_.begin(), steps_.end(),
                                    [&](Step const& step) { return step.name == *name; });
    if (found == steps_.end() || name->empty())
        throw Error("There is no step " + MoxRead::quoted(*name) + ".");
    return *found;
}

void StepReader::open(Layout layout)
{
    ReadPlan plan(model_);
    for (std::vector<ModelShape const*> const& group : groupsOf(shapes_, layout)) {
        grids_.push_back(std::make_unique<Grid>(group, model_, warnings_));
        grids_.back()->planMesh(plan);
    }
    plan.run();
    for (auto const& grid : grids_) {
        grid->finishMesh();
        annotations_.push_back(std::make_unique<Annotations>(*grid));
    }
}

void StepReader::show(Step const& step)
{
    ReadPlan plan(model_);
    for (auto const& grid : grids_)
        grid->planStep(plan, step.name);
    plan.run();
    for (auto const& annotations : annotations_)
        annotations->showStep(step);
}

} // namespace Export
