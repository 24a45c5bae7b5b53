#include "Topology.h"

#include <map>

namespace Gmsh {

namespace {

struct Entry
{
    char const* type;
    std::vector<std::size_t> order;
};

/// Gmsh sorts the edges of a solid by their nodes, and a model by where they are: bottom, top,
/// upright.
std::map<int, Entry> const& entries()
{
    static std::map<int, Entry> const all = {
        {1, {"Line", {}}},
        {2, {"Triangle", {}}},
        {3, {"Quadrangle", {}}},
        {4, {"Tetrahedron", {}}},
        {5, {"Hexahedron", {}}},
        {6, {"Wedge", {}}},
        {7, {"Pyramid", {}}},
        {8, {"Line 3", {}}},
        {9, {"Triangle 6", {}}},
        {10, {"Quadrangle 9", {}}},
        {11, {"Tetrahedron 10", {0, 1, 2, 3, 4, 5, 6, 7, 9, 8}}},
        {12, {"Hexahedron 27", {0,  1,  2,  3,  4,  5,  6,  7,  8,  11, 13, 9,  16, 18,
                                19, 17, 10, 12, 14, 15, 22, 23, 21, 24, 20, 25, 26}}},
        {13, {"Wedge 18", {0, 1, 2, 3, 4, 5, 6, 9, 7, 12, 14, 13, 8, 10, 11, 15, 17, 16}}},
        {14, {"Pyramid 14", {0, 1, 2, 3, 4, 5, 8, 10, 6, 7, 9, 11, 12, 13}}},
        {15, {"Point", {}}},
        {16, {"Quadrangle 8", {}}},
        {17,
         {"Hexahedron 20", {0, 1, 2, 3, 4, 5, 6, 7, 8, 11, 13, 9, 16, 18, 19, 17, 10, 12, 14, 15}}},
        {18, {"Wedge 15", {0, 1, 2, 3, 4, 5, 6, 9, 7, 12, 14, 13, 8, 10, 11}}},
        {19, {"Pyramid 13", {0, 1, 2, 3, 4, 5, 8, 10, 6, 7, 9, 11, 12}}},
        {26, {"Line 4", {}}},
    };
    return all;
}

} // namespace

Topology topologyOf(int gmshType)
{
    auto const found = entries().find(gmshType);
    if (found == entries().end())
        return {};
    return {Exchange::ElementType::find(found->second.type), found->second.order};
}

} // namespace Gmsh
