#ifndef READ_GMSH_TOPOLOGY_H
#define READ_GMSH_TOPOLOGY_H

#include "exchange/ElementType.h"

#include <cstddef>
#include <vector>

namespace Gmsh {

/// What elements of one of Gmsh's numbered types are.
struct Topology
{
    /// Null for what a model can't hold.
    Exchange::ElementType const* type = nullptr;
    /// For each node in a model's order, which of the element's nodes in Gmsh it is; empty when the
    /// orders are the same.
    std::vector<std::size_t> order;
};

Topology topologyOf(int gmshType);

} // namespace Gmsh

#endif
