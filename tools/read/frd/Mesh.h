#ifndef READ_FRD_MESH_H
#define READ_FRD_MESH_H

#include "Topology.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Frd {

struct Node
{
    std::uint32_t id;
    std::array<double, 3> coordinates;
};

struct Element
{
    std::uint32_t id;
    Topology const* type;
    std::int64_t group;
    std::int64_t material;
    /// Where its nodes begin in the mesh's connectivity.
    std::size_t firstNode;
};

/// Nodes and elements of a result file, in the file's order.
class Mesh
{
public:
    /// False, and nothing added, when there is a node of that id.
    bool addNode(Node const& node);

    /// False, and nothing added, when there is an element of that id.
    bool addElement(std::uint32_t id, Topology const& type, std::int64_t group,
                    std::int64_t material, std::vector<std::uint32_t> const& nodeIndexes);

    /// The number that stands for a material of which the file has only the name: -1, -2, and so
    /// on, which are no solver's.
    std::int64_t materialCalled(std::string const& name);

    /// The names of the materials that have such numbers.
    std::map<std::int64_t, std::string> const& materialNames() const { return materialNames_; }

    /// Whether the file holds coordinates as doubles.
    bool holdsDoubles() const { return holdsDoubles_; }
    void setHoldsDoubles(bool holdsDoubles) { holdsDoubles_ = holdsDoubles; }

    std::vector<Node> const& nodes() const { return nodes_; }
    std::vector<Element> const& elements() const { return elements_; }

    /// Index among `nodes()` of the node with that id.
    std::optional<std::uint32_t> indexOf(std::int64_t nodeId) const;

    /// Index among `nodes()` of an element's node; `position` counts in the file's order.
    std::uint32_t nodeOf(Element const& element, std::size_t position) const
    {
        return connectivity_[element.firstNode + position];
    }

private:
    std::vector<Node> nodes_;
    std::vector<Element> elements_;
    std::vector<std::uint32_t> connectivity_;
    std::unordered_map<std::uint32_t, std::uint32_t> indexes_;
    std::unordered_set<std::uint32_t> elementIds_;
    std::map<std::int64_t, std::string> materialNames_;
    bool holdsDoubles_ = false;
};

} // namespace Frd

#endif
