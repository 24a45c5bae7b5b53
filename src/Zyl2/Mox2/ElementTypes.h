#ifndef ZYL2_MOX2_ELEMENTTYPES_H
#define ZYL2_MOX2_ELEMENTTYPES_H

#include <Zyl2/Mox2/Mesh.h>

#include <cstddef>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

struct ElementDescription
{
    char const* name;
    unsigned int dimension;
    std::size_t nodes;
    /// Each node of an element of the file, by the corners that it is in the middle of, counted
    /// from 1: "1 2 12". A corner that stands twice counts twice.
    char const* words;
};

/// \throws InvalidArguments no such type
ElementDescription const& describe(ElementType type);

/// The name of an order, as failures speak of it.
/// \return null: no such order
char const* nameOf(NodeOrder order);

/// Where the nodes of an element of the file are among those that a host has in this order.
/// \return one place for each node; empty where the order knows no such element
std::vector<std::size_t> placesIn(NodeOrder order, ElementType type);

} // namespace Mox2
} // namespace Zyl2

#endif
