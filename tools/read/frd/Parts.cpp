#include "Parts.h"

#include "exchange/NearestFloat.h"

namespace Frd {

namespace {

Exchange::AttributeList attributesOf(Shape const& shape)
{
    Exchange::AttributeList attributes = {{"GroupNumber", static_cast<int>(shape.group)},
                                          {"MaterialNumber", static_cast<int>(shape.material)}};
    if (!shape.materialName.empty())
        attributes.emplace_back("MaterialName", shape.materialName);
    return attributes;
}

void addNodes(Shape const& shape, Mesh const& mesh, Exchange::Part& part)
{
    part.nodeIds.reserve(shape.nodes.size());
    part.coordinates.reserve(3 * shape.nodes.size());
    for (std::uint32_t const index : shape.nodes) {
        Node const& node = mesh.nodes()[index];
        part.nodeIds.push_back(node.id);
        // What floats lose of the few digits of a line is not worth a warning.
        for (double const coordinate : node.coordinates)
            part.coordinates.push_back(mesh.holdsDoubles() ? coordinate
                                                           : Exchange::nearestFloat(coordinate));
    }
}

/// For each node of the mesh, its row among the shape's.
std::vector<std::uint32_t> rowsOf(Shape const& shape, Mesh const& mesh)
{
    std::vector<std::uint32_t> rows(mesh.nodes().size());
    for (std::size_t row = 0; row < shape.nodes.size(); ++row)
        rows[shape.nodes[row]] = static_cast<std::uint32_t>(row);
    return rows;
}

void addElements(Shape const& shape, Mesh const& mesh, Exchange::Part& part)
{
    std::vector<std::uint32_t> const rows = rowsOf(shape, mesh);
    part.offsets.push_back(0);
    for (std::size_t const index : shape.elements) {
        Element const& element = mesh.elements()[index];
        ElementType const& type = *element.type;
        part.elementIds.push_back(element.id);
        part.types.push_back(Exchange::ElementType::find(type.dimension, type.nodeCount));
        for (std::size_t const position : type.modelOrder)
            part.connectivity.push_back(rows[mesh.nodeOf(element, position)]);
        part.offsets.push_back(part.connectivity.size());
    }
}

} // namespace

Exchange::Part partOf(Shape const& shape, Mesh const& mesh)
{
    Exchange::Part part;
    part.name = shape.name;
    // Solvers count from 1, but the format knows 0 as well.
    part.smallestId = 0;
    addNodes(shape, mesh, part);
    if (shape.elements.empty())
        return part;
    part.attributes = attributesOf(shape);
    addElements(shape, mesh, part);
    return part;
}

} // namespace Frd
