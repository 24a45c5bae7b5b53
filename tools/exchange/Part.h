#ifndef EXCHANGE_PART_H
#define EXCHANGE_PART_H

#include "Attribute.h"
#include "ElementType.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Exchange {

/// Some nodes or elements of a part that have a name together.
struct NamedSet
{
    std::string name;
    /// Rows of the part's nodes or elements, from 0.
    std::vector<std::uint32_t> rows;
};

/// Nodes and elements that belong together: an element block, or one leaf of a multi-block dataset.
/// Its nodes are its own; where the source shares nodes between parts, each has those it uses, with
/// the same ids.
struct Part
{
    std::string name;
    /// Names of the groups that it is in, from the root's child down.
    std::vector<std::string> groups;
    AttributeList attributes;

    /// x, y, z of each node. Values that the source has as floats are kept exactly.
    std::vector<double> coordinates;
    /// The source's number of each node; empty for 1, 2, 3 and so on.
    std::vector<std::int64_t> nodeIds;
    /// A node or element with a smaller number has none.
    std::int64_t smallestId = 1;

    /// For each element, its type.
    std::vector<ElementType const*> types;
    /// Where each element's nodes begin in the connectivity, and as the last value where they end.
    std::vector<std::uint64_t> offsets;
    /// Rows of the part's nodes, from 0, in a model's order.
    std::vector<std::uint32_t> connectivity;
    /// The source's number of each element; empty for 1, 2, 3 and so on.
    std::vector<std::int64_t> elementIds;

    std::vector<NamedSet> nodeSets;
    std::vector<NamedSet> elementSets;

    std::size_t nodeCount() const { return coordinates.size() / 3; }
    std::size_t elementCount() const { return types.size(); }
};

} // namespace Exchange

#endif
