#include "MeshReader.h"

#include "exchange/NearestFloat.h"

namespace Frd {

namespace {

Exchange::AttributeList attributesOf(PartRows const& partRows)
{
    Exchange::AttributeList attributes = {{"GroupNumber", static_cast<int>(partRows.group)},
                                          {"MaterialNumber", static_cast<int>(partRows.material)}};
    if (!partRows.materialName.empty())
        attributes.emplace_back("MaterialName", partRows.materialName);
    return attributes;
}

void addNodes(PartRows const& partRows, Mesh const& mesh, Exchange::Part& part)
{
    part.nodeIds.reserve(partRows.nodes.size());
    part.coordinates.reserve(3 * partRows.nodes.size());
    for (std::uint32_t const index : partRows.nodes) {
        Node const& node = mesh.nodes()[index];
        part.nodeIds.push_back(node.id);
        // A line has too few digits for a float to lose one that matters: no warning is due.
        for (double const coordinate : node.coordinates)
            part.coordinates.push_back(mesh.holdsDoubles() ? coordinate
                                                           : Exchange::nearestFloat(coordinate));
    }
}

/// For each node of the mesh, its row among the part's.
std::vector<std::uint32_t> rowsOf(PartRows const& partRows, Mesh const& mesh)
{
    std::vector<std::uint32_t> rows(mesh.nodes().size());
    for (std::size_t row = 0; row < partRows.nodes.size(); ++row)
        rows[partRows.nodes[row]] = static_cast<std::uint32_t>(row);
    return rows;
}

void addElements(PartRows const& partRows, Mesh const& mesh, Exchange::Part& part)
{
    std::vector<std::uint32_t> const rows = rowsOf(partRows, mesh);
    part.offsets.push_back(0);
    for (std::size_t const index : partRows.elements) {
        Element const& element = mesh.elements()[index];
        Topology const& type = *element.type;
        part.elementIds.push_back(element.id);
        part.types.push_back(Exchange::ElementType::find(type.dimension, type.nodeCount));
        for (std::size_t const position : type.modelOrder)
            part.connectivity.push_back(rows[mesh.nodeOf(element, position)]);
        part.offsets.push_back(part.connectivity.size());
    }
}

Exchange::Part partOf(PartRows const& partRows, Mesh const& mesh)
{
    Exchange::Part part;
    part.name = partRows.name;
    // Solvers count from 1, but the format knows 0 as well.
    part.smallestId = 0;
    addNodes(partRows, mesh, part);
    if (partRows.elements.empty())
        return part;
    part.attributes = attributesOf(partRows);
    addElements(partRows, mesh, part);
    return part;
}

} // namespace

MeshReader::MeshReader(Mesh const& mesh, Header const& header) : rows_(partRowsOf(mesh, header))
{
    for (PartRows& rows : rows_) {
        parts_.push_back(partOf(rows, mesh));
        // Results are on nodes only.
        rows.elements = {};
    }
}

} // namespace Frd
