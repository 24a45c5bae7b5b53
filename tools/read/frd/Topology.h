#ifndef READ_FRD_TOPOLOGY_H
#define READ_FRD_TOPOLOGY_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Frd {

/// One of the element types that a result file may hold.
///
/// Corners come first in a file. Solids of second order go on with the edges of the bottom face,
/// then the vertical edges, then those of the top face, where a model has the vertical edges last.
struct Topology
{
    /// What the file calls it: 1 to 12.
    int number;
    char const* name;
    /// 1 for lines, 2 for faces, 3 for solids.
    int dimension;
    std::size_t nodeCount;
    /// For each node in a model's order, where it stands in the file's order.
    std::vector<std::size_t> modelOrder;

    /// The type with that number, or null.
    static Topology const* find(std::int64_t number);
};

} // namespace Frd

#endif
