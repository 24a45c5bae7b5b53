#ifndef READ_GMSH_PARTROWS_H
#define READ_GMSH_PARTROWS_H

#include "TagIndex.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Gmsh {

/// Which of the file's nodes and elements became one part.
struct PartRows
{
    /// Rows of its nodes among all nodes, ascending.
    std::vector<std::uint32_t> nodes;
    /// Its elements are next to one another in the order in which the parts have them.
    std::size_t firstElement = 0;
    std::size_t elementCount = 0;
};

/// The parts of a file, with what finds a node or an element among all of them.
struct MeshRows
{
    std::size_t nodeCount = 0;
    std::size_t elementCount = 0;
    TagIndex nodes;
    TagIndex elements;
    std::vector<PartRows> parts;
};

} // namespace Gmsh

#endif
