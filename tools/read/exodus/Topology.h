#ifndef READ_EXODUS_TOPOLOGY_H
#define READ_EXODUS_TOPOLOGY_H

#include "exchange/ElementType.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Exodus {

/// What the elements of a block are.
struct Topology
{
    /// Null for what a model can't hold.
    Exchange::ElementType const* type = nullptr;
    /// For each node in a model's order, which of the element's nodes in the file it is; empty when
    /// the orders are the same.
    std::vector<std::size_t> order;
};

/// Only the first letters of a block's type count, in either case: HEX, hex8 and HEXAHEDRON are the
/// same. How many nodes an element has is not in the name, but in the block. The dimension of the
/// file's coordinates tells what a shell is: a line in the plane, a face in space.
Topology topologyOf(std::string const& name, std::int64_t nodesPerElement,
                    std::int64_t dimensionOfFile);

/// Whether the elements of the block are lists of faces, or of nodes, of differing length.
bool isPolygon(std::string const& name);
bool isPolyhedron(std::string const& name);

} // namespace Exodus

#endif
