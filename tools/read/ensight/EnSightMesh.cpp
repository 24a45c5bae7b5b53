#include "EnSightMesh.h"

#include <algorithm>
#include <set>

namespace VtkRead {

namespace {

std::string const ghostMark = "g_";
constexpr std::uint64_t varying = 0;

std::map<std::string, std::uint64_t> const& elementTypes()
{
    static std::map<std::string, std::uint64_t> const types = {
        {"point", 1},        {"bar2", 2},        {"bar3", 3},     {"tria3", 3},    {"tria6", 6},
        {"quad4", 4},        {"quad8", 8},       {"tetra4", 4},   {"tetra10", 10}, {"pyramid5", 5},
        {"pyramid13", 13},   {"penta6", 6},      {"penta15", 15}, {"hexa8", 8},    {"hexa20", 20},
        {"nsided", varying}, {"nfaced", varying}};
    return types;
}

std::string withoutMark(std::string const& type)
{
    return EnSightMesh::isGhost(type) ? type.substr(ghostMark.size()) : type;
}

} // namespace

bool EnSightMesh::Part::hasElements() const
{
    return std::any_of(elements.begin(), elements.end(),
                       [](auto const& each) { return each.second > 0 && !isGhost(each.first); });
}

bool EnSightMesh::Part::operator==(Part const& other) const
{
    return number == other.number && nodes == other.nodes && elements == other.elements;
}

bool EnSightMesh::operator==(EnSightMesh const& other) const
{
    return isGold == other.isGold && sharedNodes == other.sharedNodes && parts == other.parts;
}

EnSightMesh::Part const* EnSightMesh::find(std::uint64_t number) const
{
    auto const part = std::find_if(parts.begin(), parts.end(),
                                   [&](Part const& each) { return each.number == number; });
    return part == parts.end() ? nullptr : &*part;
}

std::uint64_t EnSightMesh::nodesOf(std::string const& type)
{
    auto const known = elementTypes().find(withoutMark(type));
    return known == elementTypes().end() ? 0 : known->second;
}

bool EnSightMesh::isElementType(std::string const& word)
{
    return elementTypes().count(withoutMark(word)) > 0;
}

bool EnSightMesh::hasMidSideNodes(std::string const& type)
{
    static std::set<std::string> const types = {"bar3",      "tria6",   "quad8", "tetra10",
                                                "pyramid13", "penta15", "hexa20"};
    return types.count(withoutMark(type)) > 0;
}

bool EnSightMesh::isGhost(std::string const& type)
{
    return type.compare(0, ghostMark.size(), ghostMark) == 0;
}

} // namespace VtkRead
