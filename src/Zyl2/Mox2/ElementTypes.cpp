#include "Zyl2/Mox2/ElementTypes.h"

#include "Zyl2/Exception/Raise.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string>

namespace Zyl2 {
namespace Mox2 {

namespace {

// The elements of the file, in the order of `ElementType`.
constexpr std::array<ElementDescription, 22> descriptions{
    {{"Point1", 1, 1, "1"},
     {"Line2", 1, 2, "1 2"},
     {"Line3", 1, 3, "1 2 12"},
     {"Line4", 1, 4, "1 2 112 122"},
     {"Triangle3", 2, 3, "1 2 3"},
     {"Triangle6", 2, 6, "1 2 3 12 23 31"},
     {"Triangle7", 2, 7, "1 2 3 12 23 31 123"},
     {"Quadrangle4", 2, 4, "1 2 3 4"},
     {"Quadrangle8", 2, 8, "1 2 3 4 12 23 34 41"},
     {"Quadrangle9", 2, 9, "1 2 3 4 12 23 34 41 1234"},
     {"Tetrahedron4", 3, 4, "1 2 3 4"},
     {"Tetrahedron10", 3, 10, "1 2 3 4 12 23 31 14 24 34"},
     {"Pyramid5", 3, 5, "1 2 3 4 5"},
     {"Pyramid13", 3, 13, "1 2 3 4 5 12 23 34 41 15 25 35 45"},
     {"Pyramid19", 3, 19, "1 2 3 4 5 12 23 34 41 15 25 35 45 1234 125 235 345 415 12345"},
     {"Wedge6", 3, 6, "1 2 3 4 5 6"},
     {"Wedge15", 3, 15, "1 2 3 4 5 6 12 23 31 45 56 64 14 25 36"},
     {"Wedge18", 3, 18, "1 2 3 4 5 6 12 23 31 45 56 64 14 25 36 1254 2365 3146"},
     {"Hexahedron8", 3, 8, "1 2 3 4 5 6 7 8"},
     {"Hexahedron20", 3, 20, "1 2 3 4 5 6 7 8 12 23 34 41 56 67 78 85 15 26 37 48"},
     {"Hexahedron24", 3, 24,
      "1 2 3 4 5 6 7 8 12 23 34 41 56 67 78 85 15 26 37 48 1584 2376 1265 4873"},
     {"Hexahedron27", 3, 27,
      "1 2 3 4 5 6 7 8 12 23 34 41 56 67 78 85 15 26 37 48 1584 2376 1265 4873 1234 5678 "
      "12345678"}}};

struct OtherOrder
{
    NodeOrder order;
    ElementType type;
    /// As in the descriptions; empty where the order knows no such element.
    char const* words;
};

/// The elements whose nodes another order has in other places than the file.
constexpr std::array<OtherOrder, 26> otherOrders{
    {{NodeOrder::Vtk, ElementType::Wedge6, "1 3 2 4 6 5"},
     {NodeOrder::Vtk, ElementType::Wedge15, "1 3 2 4 6 5 13 32 21 46 65 54 14 36 25"},
     {NodeOrder::Vtk, ElementType::Wedge18,
      "1 3 2 4 6 5 13 32 21 46 65 54 14 36 25 1364 3256 2145"},

     {NodeOrder::Abaqus, ElementType::Line3, "1 12 2"},
     {NodeOrder::Abaqus, ElementType::Line4, ""},
     {NodeOrder::Abaqus, ElementType::Triangle7, ""},
     {NodeOrder::Abaqus, ElementType::Pyramid13, ""},
     {NodeOrder::Abaqus, ElementType::Pyramid19, ""},
     {NodeOrder::Abaqus, ElementType::Hexahedron24, ""},
     {NodeOrder::Abaqus, ElementType::Hexahedron27,
      "1 2 3 4 5 6 7 8 12 23 34 41 56 67 78 85 15 26 37 48 12345678 1234 5678 1265 2376 3487 "
      "4158"},

     {NodeOrder::Gmsh, ElementType::Triangle7, ""},
     {NodeOrder::Gmsh, ElementType::Tetrahedron10, "1 2 3 4 12 23 31 14 34 24"},
     {NodeOrder::Gmsh, ElementType::Pyramid13, "1 2 3 4 5 12 14 15 23 25 34 35 45"},
     {NodeOrder::Gmsh, ElementType::Pyramid19, ""},
     {NodeOrder::Gmsh, ElementType::Wedge15, "1 2 3 4 5 6 12 13 14 23 25 36 45 46 56"},
     {NodeOrder::Gmsh, ElementType::Wedge18,
      "1 2 3 4 5 6 12 13 14 23 25 36 45 46 56 1254 1463 2365"},
     {NodeOrder::Gmsh, ElementType::Hexahedron20,
      "1 2 3 4 5 6 7 8 12 14 15 23 26 34 37 48 56 58 67 78"},
     {NodeOrder::Gmsh, ElementType::Hexahedron24, ""},
     {NodeOrder::Gmsh, ElementType::Hexahedron27,
      "1 2 3 4 5 6 7 8 12 14 15 23 26 34 37 48 56 58 67 78 1432 1265 1584 2376 3487 5678 "
      "12345678"},

     {NodeOrder::Cgns, ElementType::Triangle7, ""},
     {NodeOrder::Cgns, ElementType::Pyramid19, ""},
     {NodeOrder::Cgns, ElementType::Wedge15, "1 2 3 4 5 6 12 23 31 14 25 36 45 56 64"},
     {NodeOrder::Cgns, ElementType::Wedge18,
      "1 2 3 4 5 6 12 23 31 14 25 36 45 56 64 1254 2365 3146"},
     {NodeOrder::Cgns, ElementType::Hexahedron20,
      "1 2 3 4 5 6 7 8 12 23 34 41 15 26 37 48 56 67 78 85"},
     {NodeOrder::Cgns, ElementType::Hexahedron24, ""},
     {NodeOrder::Cgns, ElementType::Hexahedron27,
      "1 2 3 4 5 6 7 8 12 23 34 41 15 26 37 48 56 67 78 85 1234 1265 2376 3487 4158 5678 "
      "12345678"}}};

/// The nodes of an element; the corners of each in ascending order, as they may be told in any.
std::vector<std::string> wordsOf(char const* text)
{
    std::vector<std::string> words;
    std::istringstream stream(text);
    for (std::string word; stream >> word;) {
        std::sort(word.begin(), word.end());
        words.push_back(word);
    }
    return words;
}

char const* wordsIn(NodeOrder order, ElementType type)
{
    for (OtherOrder const& other : otherOrders)
        if (other.order == order && other.type == type)
            return other.words;
    return describe(type).words;
}

} // namespace

ElementDescription const& describe(ElementType type)
{
    auto const index = static_cast<std::size_t>(type);
    if (index >= descriptions.size())
        Exception::raise(Exception::Sites::ElementTypes::NoSuchType,
                         Exception::sentence(index, " is no type of elements"));
    return descriptions[index];
}

char const* nameOf(NodeOrder order)
{
    switch (order) {
    case NodeOrder::Model:
        return "the file";
    case NodeOrder::Vtk:
        return "VTK";
    case NodeOrder::Abaqus:
        return "Abaqus";
    case NodeOrder::Gmsh:
        return "Gmsh";
    case NodeOrder::Cgns:
        return "CGNS";
    }
    return nullptr;
}

std::vector<std::size_t> placesIn(NodeOrder order, ElementType type)
{
    std::vector<std::string> const given = wordsOf(wordsIn(order, type));
    std::vector<std::size_t> places;
    if (given.empty())
        return places;
    for (std::string const& word : wordsOf(describe(type).words))
        places.push_back(
            static_cast<std::size_t>(std::find(given.begin(), given.end(), word) - given.begin()));
    return places;
}

std::size_t nodesOf(ElementType type)
{
    return describe(type).nodes;
}

unsigned int dimensionOf(ElementType type)
{
    return describe(type).dimension;
}

} // namespace Mox2
} // namespace Zyl2
