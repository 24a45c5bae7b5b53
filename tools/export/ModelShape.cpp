#include "ModelShape.h"

#include <algorithm>

namespace Export {

namespace {

void addAncestors(ModelShape& shape, MoxRead::Model const& model, MoxRead::Node const& geometry)
{
    for (std::uint32_t id = geometry.parent; id != 0; id = model.node(id).parent) {
        MoxRead::Node const& node = model.node(id);
        if (node.group() != nullptr)
            shape.groups.push_back(&node);
        else if (node.shape() != nullptr && !shape.material)
            shape.material = node.shape()->material;
    }
    std::reverse(shape.groups.begin(), shape.groups.end());
}

ModelShape shapeOf(MoxRead::Model const& model, MoxRead::Node const& node)
{
    ModelShape shape;
    shape.name = node.name;
    shape.geometry = node.geometry();
    for (MoxRead::Variable const& variable : shape.geometry->variables)
        shape.datasets[variable.stepName()].push_back(&variable);
    addAncestors(shape, model, node);
    for (MoxRead::Node const* group : shape.groups)
        shape.transform = shape.transform.of(Transform(*group->group()));
    return shape;
}

// Depth first, without recursion: a tree may be as deep as it has nodes.
std::vector<MoxRead::Node const*> inTreeOrder(MoxRead::Model const& model)
{
    std::vector<MoxRead::Node const*> result;
    std::vector<std::uint32_t> waiting = {1};
    while (!waiting.empty()) {
        MoxRead::Node const& node = model.node(waiting.back());
        waiting.pop_back();
        result.push_back(&node);
        if (node.nextSibling != 0)
            waiting.push_back(node.nextSibling);
        if (node.firstChild != 0)
            waiting.push_back(node.firstChild);
    }
    return result;
}

} // namespace

MoxRead::Model::Variables const& ModelShape::datasetsOf(std::string const& step) const
{
    static MoxRead::Model::Variables const none;
    auto const found = datasets.find(step);
    return found == datasets.end() ? none : found->second;
}

std::vector<ModelShape> shapesOf(MoxRead::Model const& model)
{
    std::vector<ModelShape> shapes;
    for (MoxRead::Node const* node : inTreeOrder(model))
        if (node->geometry() != nullptr)
            shapes.push_back(shapeOf(model, *node));
    return shapes;
}

} // namespace Export
