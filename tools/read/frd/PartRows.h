#ifndef READ_FRD_PARTROWS_H
#define READ_FRD_PARTROWS_H

#include "Header.h"
#include "Mesh.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Frd {

/// Which nodes and elements of the mesh become one part: the elements of one group, material and
/// dimension, with the nodes that they use.
struct PartRows
{
    std::string name;
    std::int64_t group;
    std::int64_t material;
    /// Blank when the file does not name the material.
    std::string materialName;
    /// 0 for the nodes that no element uses.
    int dimension;
    /// Indexes into the mesh's elements, in the file's order.
    std::vector<std::size_t> elements;
    /// Indexes into the mesh's nodes, in ascending order of their ids.
    std::vector<std::uint32_t> nodes;
};

/// Splits a mesh into parts, in ascending order of group, material and dimension; nodes without
/// elements, if there are any, come last. Every element is in one part, every node in at least
/// one. Parts of materials that are called alike have the same name.
std::vector<PartRows> partRowsOf(Mesh const& mesh, Header const& header);

} // namespace Frd

#endif
