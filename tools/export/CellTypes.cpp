#include "CellTypes.h"

#include "Error.h"

#include <vtkCellType.h>

#include <algorithm>
#include <array>

namespace Export {

namespace {

constexpr std::uint32_t any = 0;

struct CountedType
{
    int dimension;
    std::uint32_t nodeCount;
    unsigned char cellType;
};

constexpr std::array<CountedType, 22> countedTypes{{
    {1, 1, VTK_VERTEX},
    {1, 2, VTK_LINE},
    {1, 3, VTK_QUADRATIC_EDGE},
    {1, 4, VTK_CUBIC_LINE},
    {2, 3, VTK_TRIANGLE},
    {2, 4, VTK_QUAD},
    {2, 6, VTK_QUADRATIC_TRIANGLE},
    {2, 7, VTK_BIQUADRATIC_TRIANGLE},
    {2, 8, VTK_QUADRATIC_QUAD},
    {2, 9, VTK_BIQUADRATIC_QUAD},
    {3, 4, VTK_TETRA},
    {3, 5, VTK_PYRAMID},
    {3, 6, VTK_WEDGE},
    {3, 8, VTK_HEXAHEDRON},
    {3, 10, VTK_QUADRATIC_TETRA},
    {3, 13, VTK_QUADRATIC_PYRAMID},
    {3, 15, VTK_QUADRATIC_WEDGE},
    {3, 18, VTK_BIQUADRATIC_QUADRATIC_WEDGE},
    {3, 19, VTK_TRIQUADRATIC_PYRAMID},
    {3, 20, VTK_QUADRATIC_HEXAHEDRON},
    {3, 24, VTK_BIQUADRATIC_QUADRATIC_HEXAHEDRON},
    {3, 27, VTK_TRIQUADRATIC_HEXAHEDRON},
}};

struct NamedType
{
    char const* name;
    std::uint32_t nodeCount;
    unsigned char cellType;
};

constexpr std::array<NamedType, 11> namedTypes{{
    {"Polyvertex", any, VTK_POLY_VERTEX},
    {"Polyline", any, VTK_POLY_LINE},
    {"Polygon", any, VTK_POLYGON},
    {"Triangle strip", any, VTK_TRIANGLE_STRIP},
    {"Quadratic polygon", any, VTK_QUADRATIC_POLYGON},
    {"Quadratic linear quad", 6, VTK_QUADRATIC_LINEAR_QUAD},
    {"Quadrangle 6", 6, VTK_QUADRATIC_LINEAR_QUAD},
    {"Quadratic linear wedge", 12, VTK_QUADRATIC_LINEAR_WEDGE},
    {"Wedge 12", 12, VTK_QUADRATIC_LINEAR_WEDGE},
    {"Pentagonal prism", 10, VTK_PENTAGONAL_PRISM},
    {"Hexagonal prism", 12, VTK_HEXAGONAL_PRISM},
}};

NamedType const* findNamed(std::string const& name)
{
    auto const* const found =
        std::find_if(namedTypes.begin(), namedTypes.end(),
                     [&](NamedType const& candidate) { return name == candidate.name; });
    return found == namedTypes.end() ? nullptr : found;
}

std::string plural(std::uint32_t nodeCount)
{
    return std::to_string(nodeCount) + (nodeCount == 1 ? " node" : " nodes");
}

unsigned char typeByCount(int dimension, std::uint32_t nodeCount)
{
    auto const* const found =
        std::find_if(countedTypes.begin(), countedTypes.end(), [&](CountedType const& candidate) {
            return candidate.dimension == dimension && candidate.nodeCount == nodeCount;
        });
    if (found == countedTypes.end()) {
        throw Error("There is no type of element of dimension " + std::to_string(dimension) +
                    " with " + plural(nodeCount) + ".");
    }
    return found->cellType;
}

} // namespace

CellTypes::CellTypes(int dimension, std::string const& elementType)
    : dimension_(dimension), elementType_(elementType)
{
    if (!elementType_.empty() && findNamed(elementType_) == nullptr)
        throw Error("The type of element \"" + elementType_ + "\" is unknown.");
}

unsigned char CellTypes::of(std::uint32_t nodeCount) const
{
    if (elementType_.empty())
        return typeByCount(dimension_, nodeCount);
    NamedType const& type = *findNamed(elementType_);
    bool const fits = type.nodeCount == any ? nodeCount > 0 : nodeCount == type.nodeCount;
    if (!fits)
        throw Error("A " + elementType_ + " can't have " + plural(nodeCount) + ".");
    return type.cellType;
}

} // namespace Export
