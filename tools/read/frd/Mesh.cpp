#include "Mesh.h"

#include <limits>

namespace Frd {

bool Mesh::addNode(Node const& node)
{
    auto const index = static_cast<std::uint32_t>(nodes_.size());
    if (!indexes_.emplace(node.id, index).second)
        return false;
    nodes_.push_back(node);
    return true;
}

bool Mesh::addElement(std::uint32_t id, Topology const& type, std::int64_t group,
                      std::int64_t material, std::vector<std::uint32_t> const& nodeIndexes)
{
    if (!elementIds_.insert(id).second)
        return false;
    elements_.push_back({id, &type, group, material, connectivity_.size()});
    connectivity_.insert(connectivity_.end(), nodeIndexes.begin(), nodeIndexes.end());
    return true;
}

std::optional<std::uint32_t> Mesh::indexOf(std::int64_t nodeId) const
{
    if (nodeId < 0 || nodeId > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    auto const found = indexes_.find(static_cast<std::uint32_t>(nodeId));
    return found == indexes_.end() ? std::nullopt : std::optional(found->second);
}

std::int64_t Mesh::materialCalled(std::string const& name)
{
    for (auto const& [number, known] : materialNames_)
        if (known == name)
            return number;
    std::int64_t const number = -1 - static_cast<std::int64_t>(materialNames_.size());
    materialNames_[number] = name;
    return number;
}

} // namespace Frd
