#include "PartRows.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace Frd {

namespace {

using Key = std::tuple<std::int64_t, std::int64_t, int>;

using Names = std::map<std::int64_t, std::string>;

std::string materialNameOf(Names const& names, std::int64_t material)
{
    auto const found = names.find(material);
    return found == names.end() ? std::string() : found->second;
}

PartRows makePart(Key const& key, Names const& materials)
{
    PartRows part{};
    std::tie(part.group, part.material, part.dimension) = key;
    part.materialName = materialNameOf(materials, part.material);
    std::string const material =
        part.materialName.empty() ? std::to_string(part.material) : part.materialName;
    part.name = "Group " + std::to_string(part.group) + " Material " + material + " " +
                std::to_string(part.dimension) + "D";
    return part;
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

std::vector<std::uint32_t> unusedNodes(Mesh const& mesh, std::vector<PartRows> const& parts)
{
    std::vector<bool> isUsed(mesh.nodes().size());
    for (PartRows const& part : parts)
        for (std::uint32_t const node : part.nodes)
            isUsed[node] = true;
    std::vector<std::uint32_t> unused;
    for (std::size_t i = 0; i < isUsed.size(); ++i)
        if (!isUsed[i])
            unused.push_back(static_cast<std::uint32_t>(i));
    sortById(mesh, unused);
    return unused;
}

} // namespace

std::vector<PartRows> partRowsOf(Mesh const& mesh, Header const& header)
{
    Names materials = header.materials;
    materials.insert(mesh.materialNames().begin(), mesh.materialNames().end());
    std::vector<PartRows> parts;
    for (auto& [key, elements] : elementsByKey(mesh)) {
        PartRows part = makePart(key, materials);
        part.nodes = nodesOf(mesh, elements);
        part.elements = std::move(elements);
        parts.push_back(std::move(part));
    }
    PartRows rest{};
    rest.name = "Nodes without elements";
    rest.nodes = unusedNodes(mesh, parts);
    if (!rest.nodes.empty())
        parts.push_back(std::move(rest));
    return parts;
}

} // namespace Frd
