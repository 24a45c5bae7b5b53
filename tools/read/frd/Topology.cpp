#include "Topology.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace Frd {

namespace {

Topology sameOrder(int number, char const* name, int dimension, std::size_t nodeCount)
{
    std::vector<std::size_t> order(nodeCount);
    std::iota(order.begin(), order.end(), std::size_t(0));
    return {number, name, dimension, nodeCount, order};
}

/// Swaps the file's last two runs of mid-side nodes: vertical edges and edges of the top face.
Topology verticalEdgesLast(int number, char const* name, std::size_t corners)
{
    std::size_t const edges = corners / 2;
    Topology type = sameOrder(number, name, 3, corners + 3 * edges);
    auto const vertical = type.modelOrder.begin() + static_cast<std::ptrdiff_t>(corners + edges);
    std::rotate(vertical, vertical + static_cast<std::ptrdiff_t>(edges), type.modelOrder.end());
    return type;
}

std::array<Topology, 12> const& allTypes()
{
    static std::array<Topology, 12> const types = {
        sameOrder(1, "he8", 3, 8),       sameOrder(2, "pe6", 3, 6),
        sameOrder(3, "te4", 3, 4),       verticalEdgesLast(4, "he20", 8),
        verticalEdgesLast(5, "pe15", 6), sameOrder(6, "te10", 3, 10),
        sameOrder(7, "tr3", 2, 3),       sameOrder(8, "tr6", 2, 6),
        sameOrder(9, "qu4", 2, 4),       sameOrder(10, "qu8", 2, 8),
        sameOrder(11, "be2", 1, 2),      sameOrder(12, "be3", 1, 3)};
    return types;
}

} // namespace

Topology const* Topology::find(std::int64_t number)
{
    auto const& types = allTypes();
    bool const isKnown = number >= 1 && number <= static_cast<std::int64_t>(types.size());
    return isKnown ? &types[static_cast<std::size_t>(number - 1)] : nullptr;
}

} // namespace Frd
