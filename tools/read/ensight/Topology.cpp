#include "Topology.h"

#include <map>

namespace EnSight {

namespace {

using Exchange::ElementType;

std::string const ghostMark = "g_";

/// Corners come first, then the middles of the edges of the bottom, of those of the top, and of the
/// upright ones, as in a model. The corners of the bottom of 'penta6' and 'penta15' are 1, 2, 3,
/// those above them 4, 5, 6. The middle of a line is between its ends.
std::map<std::string, Topology> const& topologies()
{
    static std::map<std::string, Topology> const all = {
        {"point", {1, ElementType::find("Point"), {}}},
        {"bar2", {2, ElementType::find("Line"), {}}},
        {"bar3", {3, ElementType::find("Line 3"), {0, 2, 1}}},
        {"tria3", {3, ElementType::find("Triangle"), {}}},
        {"tria6", {6, ElementType::find("Triangle 6"), {}}},
        {"quad4", {4, ElementType::find("Quadrangle"), {}}},
        {"quad8", {8, ElementType::find("Quadrangle 8"), {}}},
        {"tetra4", {4, ElementType::find("Tetrahedron"), {}}},
        {"tetra10", {10, ElementType::find("Tetrahedron 10"), {}}},
        {"pyramid5", {5, ElementType::find("Pyramid"), {}}},
        {"pyramid13", {13, ElementType::find("Pyramid 13"), {}}},
        {"penta6", {6, ElementType::find("Wedge"), {}}},
        {"penta15", {15, ElementType::find("Wedge 15"), {}}},
        {"hexa8", {8, ElementType::find("Hexahedron"), {}}},
        {"hexa20", {20, ElementType::find("Hexahedron 20"), {}}},
        {"nsided", {0, ElementType::find("Polygon"), {}}},
        {"nfaced", {0, nullptr, {}}},
    };
    return all;
}

} // namespace

bool isGhost(std::string const& keyword)
{
    return keyword.compare(0, ghostMark.size(), ghostMark) == 0;
}

Topology const* topologyOf(std::string const& keyword)
{
    auto const known =
        topologies().find(isGhost(keyword) ? keyword.substr(ghostMark.size()) : keyword);
    return known == topologies().end() ? nullptr : &known->second;
}

} // namespace EnSight
