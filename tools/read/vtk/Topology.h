#ifndef READ_VTK_TOPOLOGY_H
#define READ_VTK_TOPOLOGY_H

#include <exchange/ElementType.h>

#include <cstddef>
#include <string>
#include <vector>

namespace VtkRead {

/// What a cell of VTK becomes.
struct Topology
{
    /// Null when a model can't hold such a cell.
    Exchange::ElementType const* type = nullptr;
    /// For each node of the element, which point of the cell it is; empty when the order is the
    /// same.
    std::vector<std::size_t> order;
};

Topology topologyOf(int cellType, std::size_t pointCount);

/// What to call such cells in a message, for instance "polyhedron".
std::string cellTypeName(int cellType, std::size_t pointCount);

} // namespace VtkRead

#endif
