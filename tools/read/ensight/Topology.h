#ifndef READ_ENSIGHT_TOPOLOGY_H
#define READ_ENSIGHT_TOPOLOGY_H

#include <exchange/ElementType.h>

#include <cstddef>
#include <string>
#include <vector>

namespace EnSight {

/// What a keyword of element types stands for.
struct Topology
{
    /// Nodes of each element; 0 where elements may have any number.
    std::size_t nodeCount = 0;
    /// Null of polyhedra, which a model can't hold.
    Exchange::ElementType const* type = nullptr;
    /// For each node of an element in a model, which one it is in the file; empty when it is the
    /// same.
    std::vector<std::size_t> order;
};

/// Null when the word is no type of elements. Ghosts are of the type that they are ghosts of.
Topology const* topologyOf(std::string const& keyword);

/// Whether the elements belong to another piece of the mesh.
bool isGhost(std::string const& keyword);

} // namespace EnSight

#endif
