#include "ShapePartition.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace Frd {

namespace {

using Key = std::tuple<std::int64_t, std::int64_t, int>;

std::string materialNameOf(Header const& header, std::int64_t material)
{
    auto const found = header.materials.find(material);
    return found == header.materials.end() ? std::string() : found->second;
}

Shape makeShape(Key const& key, Header const& header)
{
    Shape shape{};
    std::tie(shape.group, shape.material, shape.dimension) = key;
    shape.materialName = materialNameOf(header, shape.material);
    std::string const material =
        shape.materialName.empty() ? std::to_string(shape.material) : shape.materialName;
    shape.name = "Group " + std::to_string(shape.group) + " Material " + material + " " +
                 std::to_string(shape.dimension) + "D";
    return shape;
}

std::map<Key, std::vector<std::size_t>> elementsByKey(Mesh const& mesh)
{
    std::map<Key, std::vector<std::size_t>> byKey;
    for (std::size_t i = 0; i < mesh.elements().size(); ++i) {
        Element const& element = mesh.elements()[i];
        byKey[{element.group, element.material, element.type->dimension}].push_back(i);
    }
    return byKey;
}

void sortById(Mesh const& mesh, std::vector<std::uint32_t>& nodes)
{
    std::sort(nodes.begin(), nodes.end(), [&mesh](std::uint32_t a, std::uint32_t b) {
        return mesh.nodes()[a].id < mesh.nodes()[b].id;
    });
}

std::vector<std::uint32_t> nodesOf(Mesh const& mesh, std::vector<std::size_t> const& elements)
{
    std::vector<std::uint32_t> nodes;
    for (std::size_t const i : elements) {
        Element const& element = mesh.elements()[i];
        for (std::size_t n = 0; n < element.type->nodeCount; ++n)
            nodes.push_back(mesh.nodeOf(element, n));
    }
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
    sortById(mesh, nodes);
    return nodes;
}

std::vector<std::uint32_t> unusedNodes(Mesh const& mesh, std::vector<Shape> const& shapes)
{
    std::vector<bool> isUsed(mesh.nodes().size());
    for (Shape const& shape : shapes)
        for (std::uint32_t const node : shape.nodes)
            isUsed[node] = true;
    std::vector<std::uint32_t> unused;
    for (std::size_t i = 0; i < isUsed.size(); ++i)
        if (!isUsed[i])
            unused.push_back(static_cast<std::uint32_t>(i));
    sortById(mesh, unused);
    return unused;
}

} // namespace

std::vector<Shape> partition(Mesh const& mesh, Header const& header)
{
    std::vector<Shape> shapes;
    for (auto& [key, elements] : elementsByKey(mesh)) {
        Shape shape = makeShape(key, header);
        shape.nodes = nodesOf(mesh, elements);
        shape.elements = std::move(elements);
        shapes.push_back(std::move(shape));
    }
    Shape rest{};
    rest.name = "Nodes without elements";
    rest.nodes = unusedNodes(mesh, shapes);
    if (!rest.nodes.empty())
        shapes.push_back(std::move(rest));
    return shapes;
}

} // namespace Frd
