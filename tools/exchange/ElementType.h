#ifndef EXCHANGE_ELEMENTTYPE_H
#define EXCHANGE_ELEMENTTYPE_H

#include <cstddef>
#include <string>

namespace Exchange {

/// How the nodes of an element are to be understood.
///
/// Dimension and number of nodes tell most types. Those that they don't tell are named in a model
/// by the attribute `ElementType` of the connectivity.
struct ElementType
{
    std::string name;
    /// 1 for points and lines, 2 for faces, 3 for solids.
    int dimension = 0;
    /// 0 when elements of the type may have any number of nodes, such as polygons.
    std::size_t nodeCount = 0;
    /// Whether dimension and number of nodes are enough to tell it.
    bool isToldByCount = true;

    /// The type that dimension and number of nodes tell, or null.
    static ElementType const* find(int dimension, std::size_t nodeCount);
    /// The type of that name, or null.
    static ElementType const* find(std::string const& name);
};

} // namespace Exchange

#endif
