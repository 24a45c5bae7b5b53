#include "StepReader.h"

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
    StepOrder order;
    order.add(shapes_);
    std::optional<std::string> warning;
    steps_ = order.steps(warning);
    if (warning)
        warnings_.add(*warning);
    for (std::string const& remark : model_.remarks())
        warnings_.add(remark + ".");
}

Step const& StepReader::step(std::optional<std::string> const& name) const
{
    return findStep(steps_, name);
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
