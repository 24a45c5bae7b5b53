#include "Part.h"

#include <algorithm>

namespace Export {

namespace {

void addAncestors(Part& part, MoxRead::Model const& model, MoxRead::Node const& geometry)
{
    for (std::uint32_t id = geometry.parent; id != 0; id = model.node(id).parent) {
        MoxRead::Node const& node = model.node(id);
        if (node.group() != nullptr)
            part.groups.push_back(&node);
        else if (node.shape() != nullptr && !part.material)
            part.material = node.shape()->material;
    }
    std::reverse(part.groups.begin(), part.groups.end());
}

Part partOf(MoxRead::Model const& model, MoxRead::Node const& node)
{
    Part part;
    part.name = node.name;
    part.geometry = node.geometry();
    for (MoxRead::Variable const& variable : part.geometry->variables)
        part.datasets[variable.stepName()].push_back(&variable);
    addAncestors(part, model, node);
    for (MoxRead::Node const* group : part.groups)
        part.transform = part.transform.of(Transform(*group->group()));
    return part;
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

MoxRead::Model::Variables const& Part::datasetsOf(std::string const& step) const
{
    static MoxRead::Model::Variables const none;
    auto const found = datasets.find(step);
    return found == datasets.end() ? none : found->second;
}

std::vector<Part> partsOf(MoxRead::Model const& model)
{
    std::vector<Part> parts;
    for (MoxRead::Node const* node : inTreeOrder(model))
        if (node->geometry() != nullptr)
            parts.push_back(partOf(model, *node));
    return parts;
}

} // namespace Export
