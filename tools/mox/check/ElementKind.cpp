#include "ElementKind.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace Mox::Check {

namespace {

using Path = ElementKind::Path;
using Paths = std::vector<Path>;

Path inOrder(std::uint32_t count)
{
    Path path(count);
    std::iota(path.begin(), path.end(), 0U);
    return path;
}

/// The corners of an element and which of them its edges and faces join.
struct Skeleton
{
    std::uint32_t corners = 0;
    /// In the order in which the mid-side nodes follow the corners.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> edges;
    Paths faces;

    void addEdge(std::uint32_t from, std::uint32_t to) { edges.emplace_back(from, to); }

    /// The faces of an element of so many nodes. Nodes in the middle of faces are left out: those
    /// of the edges say well enough where the face is.
    Paths pathsFor(std::uint32_t nodeCount) const
    {
        bool const hasMidSideNodes = nodeCount >= corners + edges.size();
        if (!hasMidSideNodes)
            return faces;
        Paths paths;
        for (Path const& face : faces)
            paths.push_back(withMidSideNodes(face));
        return paths;
    }

private:
    std::uint32_t midSideNode(std::uint32_t from, std::uint32_t to) const
    {
        auto const found = std::find_if(edges.begin(), edges.end(), [&](auto const& edge) {
            return edge == std::make_pair(from, to) || edge == std::make_pair(to, from);
        });
        return corners + static_cast<std::uint32_t>(found - edges.begin());
    }

    Path withMidSideNodes(Path const& face) const
    {
        Path path;
        for (std::size_t i = 0; i < face.size(); ++i) {
            path.push_back(face[i]);
            path.push_back(midSideNode(face[i], face[(i + 1) % face.size()]));
        }
        return path;
    }
};

Skeleton polygon(std::uint32_t corners)
{
    Skeleton skeleton;
    skeleton.corners = corners;
    for (std::uint32_t i = 0; i < corners; ++i)
        skeleton.addEdge(i, (i + 1) % corners);
    skeleton.faces = {inOrder(corners)};
    return skeleton;
}

// A base and a tip; over a triangle it is a tetrahedron.
Skeleton pyramid(std::uint32_t base)
{
    Skeleton skeleton = polygon(base);
    std::reverse(skeleton.faces[0].begin(), skeleton.faces[0].end());
    skeleton.corners = base + 1;
    for (std::uint32_t i = 0; i < base; ++i) {
        skeleton.addEdge(i, base);
        skeleton.faces.push_back({i, (i + 1) % base, base});
    }
    return skeleton;
}

// A bottom and a top of equal corners: wedges and hexahedra are such.
Skeleton prism(std::uint32_t base)
{
    Skeleton skeleton = polygon(base);
    Path top = skeleton.faces[0];
    std::reverse(skeleton.faces[0].begin(), skeleton.faces[0].end());
    skeleton.corners = 2 * base;
    for (std::uint32_t& corner : top)
        corner += base;
    skeleton.faces.push_back(top);
    for (std::uint32_t i = 0; i < base; ++i)
        skeleton.addEdge(base + i, base + (i + 1) % base);
    for (std::uint32_t i = 0; i < base; ++i) {
        std::uint32_t const next = (i + 1) % base;
        skeleton.addEdge(i, base + i);
        skeleton.faces.push_back({i, next, base + next, base + i});
    }
    return skeleton;
}

// The nodes between the ends follow these.
Paths linePaths(std::uint32_t nodes)
{
    Path path = inOrder(nodes);
    if (nodes > 2)
        std::rotate(path.begin() + 1, path.begin() + 2, path.end());
    return {path};
}

// All corners, then the node behind each of them.
Paths quadraticPolygonPaths(std::uint32_t nodes)
{
    Path path;
    for (std::uint32_t i = 0; i < nodes / 2; ++i) {
        path.push_back(i);
        path.push_back(nodes / 2 + i);
    }
    return {path};
}

Paths stripPaths(std::uint32_t nodes)
{
    Paths paths;
    for (std::uint32_t i = 0; i + 2 < nodes; ++i)
        paths.push_back({i, i + 1, i + 2});
    return paths;
}

enum class Build
{
    Point,
    Line,
    Polyline,
    Polygon,
    QuadraticPolygon,
    Strip,
    Surface,
    Pyramid,
    Prism
};

constexpr std::uint32_t any = 0;

struct Type
{
    /// Of the attribute `ElementType`; empty for those that dimension and number of nodes tell.
    char const* elementType;
    int dimension;
    std::uint32_t nodeCount;
    char const* name;
    Build build;
    /// Corners of the surface, of the base of a pyramid or prism.
    std::uint32_t base;
};

constexpr std::array<Type, 37> types{{
    {"", 1, 1, "point", Build::Point, 0},
    {"", 1, 2, "line", Build::Line, 0},
    {"", 1, 3, "line", Build::Line, 0},
    {"", 1, 4, "line", Build::Line, 0},
    {"", 2, 3, "triangle", Build::Surface, 3},
    {"", 2, 6, "triangle", Build::Surface, 3},
    {"", 2, 7, "triangle", Build::Surface, 3},
    {"", 2, 4, "quadrangle", Build::Surface, 4},
    {"", 2, 8, "quadrangle", Build::Surface, 4},
    {"", 2, 9, "quadrangle", Build::Surface, 4},
    {"", 3, 4, "tetrahedron", Build::Pyramid, 3},
    {"", 3, 10, "tetrahedron", Build::Pyramid, 3},
    {"", 3, 5, "pyramid", Build::Pyramid, 4},
    {"", 3, 13, "pyramid", Build::Pyramid, 4},
    {"", 3, 19, "pyramid", Build::Pyramid, 4},
    {"", 3, 6, "wedge", Build::Prism, 3},
    {"", 3, 15, "wedge", Build::Prism, 3},
    {"", 3, 18, "wedge", Build::Prism, 3},
    {"", 3, 8, "hexahedron", Build::Prism, 4},
    {"", 3, 20, "hexahedron", Build::Prism, 4},
    {"", 3, 24, "hexahedron", Build::Prism, 4},
    {"", 3, 27, "hexahedron", Build::Prism, 4},
    {"Polyvertex", 1, any, "polyvertex", Build::Point, 0},
    {"Polyline", 1, any, "polyline", Build::Polyline, 0},
    {"Polygon", 2, any, "polygon", Build::Polygon, 0},
    {"Quadratic polygon", 2, any, "quadratic polygon", Build::QuadraticPolygon, 0},
    {"Triangle strip", 2, any, "triangle strip", Build::Strip, 0},
    {"Quadratic linear quad", 2, 6, "quadrangle", Build::Surface, 4},
    {"Quadrangle 6", 2, 6, "quadrangle", Build::Surface, 4},
    {"Quadratic linear wedge", 3, 12, "wedge", Build::Prism, 3},
    {"Wedge 12", 3, 12, "wedge", Build::Prism, 3},
    {"Pentagonal prism", 3, 10, "pentagonal prism", Build::Prism, 5},
    {"Hexagonal prism", 3, 12, "hexagonal prism", Build::Prism, 6},
    {"Pyramid 14", 3, 14, "pyramid", Build::Pyramid, 4},
    {"Tetrahedron 14", 3, 14, "tetrahedron", Build::Pyramid, 3},
    {"Tetrahedron 15", 3, 15, "tetrahedron", Build::Pyramid, 3},
    {"Wedge 21", 3, 21, "wedge", Build::Prism, 3},
}};

Paths pathsOf(Type const& type, std::uint32_t nodeCount)
{
    switch (type.build) {
    case Build::Line:
        return linePaths(nodeCount);
    case Build::Polyline:
    case Build::Polygon:
        return {inOrder(nodeCount)};
    case Build::QuadraticPolygon:
        return quadraticPolygonPaths(nodeCount);
    case Build::Strip:
        return stripPaths(nodeCount);
    case Build::Surface:
        return polygon(type.base).pathsFor(nodeCount);
    case Build::Pyramid:
        return pyramid(type.base).pathsFor(nodeCount);
    case Build::Prism:
        return prism(type.base).pathsFor(nodeCount);
    case Build::Point:
        break;
    }
    return {};
}

bool canHave(Type const& type, std::uint32_t nodeCount)
{
    return type.nodeCount == any ? nodeCount > 0 : type.nodeCount == nodeCount;
}

} // namespace

ElementKinds::ElementKinds(int dimension, std::string elementType)
    : dimension_(dimension), elementType_(std::move(elementType))
{}

bool ElementKinds::areKnown() const
{
    return std::any_of(types.begin(), types.end(), [&](Type const& type) {
        return type.elementType == elementType_ && type.dimension == dimension_;
    });
}

ElementKind const* ElementKinds::of(std::uint32_t nodeCount)
{
    auto const known = known_.find(nodeCount);
    if (known != known_.end())
        return &known->second;
    auto const* const type = std::find_if(types.begin(), types.end(), [&](Type const& candidate) {
        return candidate.elementType == elementType_ && candidate.dimension == dimension_ &&
               canHave(candidate, nodeCount);
    });
    if (type == types.end())
        return nullptr;
    int const dimension = type->build == Build::Point ? 0 : dimension_;
    ElementKind kind = {type->name, dimension, pathsOf(*type, nodeCount)};
    return &known_.emplace(nodeCount, std::move(kind)).first->second;
}

} // namespace Mox::Check
