#include "ElementType.h"

#include <algorithm>
#include <vector>

namespace Exchange {

namespace {

std::vector<ElementType> const& allTypes()
{
    static std::vector<ElementType> const types = {
        {"Point", 1, 1, true},
        {"Line", 1, 2, true},
        {"Line 3", 1, 3, true},
        {"Line 4", 1, 4, true},
        {"Polyvertex", 1, 0, false},
        {"Polyline", 1, 0, false},
        {"Triangle", 2, 3, true},
        {"Quadrangle", 2, 4, true},
        {"Triangle 6", 2, 6, true},
        {"Triangle 7", 2, 7, true},
        {"Quadrangle 8", 2, 8, true},
        {"Quadrangle 9", 2, 9, true},
        {"Quadratic linear quad", 2, 6, false},
        {"Polygon", 2, 0, false},
        {"Quadratic polygon", 2, 0, false},
        {"Triangle strip", 2, 0, false},
        {"Tetrahedron", 3, 4, true},
        {"Pyramid", 3, 5, true},
        {"Wedge", 3, 6, true},
        {"Hexahedron", 3, 8, true},
        {"Tetrahedron 10", 3, 10, true},
        {"Pyramid 13", 3, 13, true},
        {"Wedge 15", 3, 15, true},
        {"Wedge 18", 3, 18, true},
        {"Hexahedron 20", 3, 20, true},
        {"Hexahedron 24", 3, 24, true},
        {"Hexahedron 27", 3, 27, true},
        {"Pentagonal prism", 3, 10, false},
        {"Hexagonal prism", 3, 12, false},
        {"Quadratic linear wedge", 3, 12, false},
        {"Tetrahedron 14", 3, 14, false},
        {"Tetrahedron 15", 3, 15, false},
        {"Pyramid 14", 3, 14, false},
        {"Pyramid 19", 3, 19, true},
        {"Wedge 21", 3, 21, false},
    };
    return types;
}

template <typename Condition>
ElementType const* findIf(Condition const& condition)
{
    auto const found = std::find_if(allTypes().begin(), allTypes().end(), condition);
    return found == allTypes().end() ? nullptr : &*found;
}

} // namespace

ElementType const* ElementType::find(int dimension, std::size_t nodeCount)
{
    return findIf([&](ElementType const& type) {
        return type.isToldByCount && type.dimension == dimension && type.nodeCount == nodeCount;
    });
}

ElementType const* ElementType::find(std::string const& name)
{
    return findIf([&](ElementType const& type) { return type.name == name; });
}

} // namespace Exchange
