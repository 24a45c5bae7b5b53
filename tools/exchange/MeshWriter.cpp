#include "MeshWriter.h"

#include "ModelAttributes.h"
#include "RowSelection.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace Exchange {

namespace {

using Zyl2::Mox2::DatasetType;
using Zyl2::Mox2::Step;

DatasetType connectivityType(int dimension)
{
    if (dimension == 1)
        return DatasetType::Connectivity1;
    return dimension == 2 ? DatasetType::Connectivity2 : DatasetType::Connectivity3;
}

DatasetType polylengthType(int dimension)
{
    if (dimension == 1)
        return DatasetType::Polylength1;
    return dimension == 2 ? DatasetType::Polylength2 : DatasetType::Polylength3;
}

bool areUsable(std::vector<std::int64_t> const& ids, std::int64_t smallest)
{
    return std::all_of(ids.begin(), ids.end(), [smallest](std::int64_t id) {
        return id >= smallest && id <= std::numeric_limits<std::uint32_t>::max();
    });
}

/// Null when there are none, or when a model can't hold them.
std::vector<std::int64_t> const* usableIds(std::vector<std::int64_t> const& ids,
                                           std::string const& whose, Part const& part,
                                           Report& report)
{
    if (ids.empty())
        return nullptr;
    if (areUsable(ids, part.smallestId))
        return &ids;
    report.warn("Numbers of the " + whose + " of '" + part.name +
                "' don't fit into a model; they are numbered 1, 2, 3 and so on.");
    return nullptr;
}

void fillIds(std::vector<std::int64_t> const* ids, RowSelection const& rows, unsigned int* to)
{
    for (std::size_t i = 0; i < rows.size(); ++i)
        to[i] = static_cast<unsigned int>(ids == nullptr ? static_cast<std::int64_t>(rows[i]) + 1
                                                         : (*ids)[rows[i]]);
}

/// For each node of the part that the shape has, its row among the nodes of the shape.
std::vector<std::uint32_t> rowsInShape(Part const& part, RowSelection const& nodes)
{
    std::vector<std::uint32_t> rows(part.nodeCount());
    for (std::size_t i = 0; i < nodes.size(); ++i)
        rows[nodes[i]] = static_cast<std::uint32_t>(i);
    return rows;
}

std::size_t connectivitySize(Part const& part, RowSelection const& elements)
{
    if (elements.isAll())
        return part.connectivity.size();
    std::size_t size = 0;
    for (std::size_t i = 0; i < elements.size(); ++i)
        size += part.offsets[elements[i] + 1] - part.offsets[elements[i]];
    return size;
}

void copyConnectivity(Part const& part, RowSelection const& elements, unsigned int* to)
{
    if (elements.isAll()) {
        std::copy(part.connectivity.begin(), part.connectivity.end(), to);
        return;
    }
    for (std::size_t i = 0; i < elements.size(); ++i)
        for (std::uint64_t n = part.offsets[elements[i]]; n < part.offsets[elements[i] + 1]; ++n)
            *to++ = part.connectivity[n];
}

AttributeList connectivityAttributes(Part const& part, Shape const& shape)
{
    AttributeList attributes = part.attributes;
    if (shape.type != nullptr)
        attributes.emplace_back("ElementType", shape.type->name);
    return attributes;
}

} // namespace

void MeshWriter::add(Part const& part, Shape const& shape, unsigned int id)
{
    addNodes(part, shape, id);
    addNodeIds(part, shape, id);
    if (shape.elements.size() != 0)
        addElements(part, shape, id);
}

void MeshWriter::addNodes(Part const& part, Shape const& shape, unsigned int id)
{
    bool const carriesAttributes = part.types.empty();
    writer_.add<float>(
        {"Coordinates", DatasetType::Coordinates, shape.nodes.size(), 3, id},
        [&](float* to) {
            for (std::size_t i = 0; i < shape.nodes.size(); ++i)
                for (std::size_t axis = 0; axis < 3; ++axis)
                    *to++ = report_.narrow(part.coordinates[shape.nodes[i] * 3 + axis]);
        },
        Step(), datasetAttributes(carriesAttributes ? part.attributes : AttributeList(), report_));
}

void MeshWriter::addNodeIds(Part const& part, Shape const& shape, unsigned int id)
{
    auto const* const ids = usableIds(part.nodeIds, "nodes", part, report_);
    writer_.add<unsigned int>({"Node Ids", DatasetType::NodeIds, shape.nodes.size(), 1, id},
                              [&](unsigned int* to) { fillIds(ids, shape.nodes, to); });
}

void MeshWriter::addElements(Part const& part, Shape const& shape, unsigned int id)
{
    addConnectivity(part, shape, id);
    writer_.add<unsigned int>(
        {"Polylength", polylengthType(shape.dimension), shape.elements.size(), 1, id},
        [&](unsigned int* to) {
            for (std::size_t i = 0; i < shape.elements.size(); ++i) {
                std::size_t const element = shape.elements[i];
                to[i] =
                    static_cast<unsigned int>(part.offsets[element + 1] - part.offsets[element]);
            }
        });
    addElementIds(part, shape, id);
}

void MeshWriter::addConnectivity(Part const& part, Shape const& shape, unsigned int id)
{
    std::size_t const size = connectivitySize(part, shape.elements);
    writer_.add<unsigned int>(
        {"Connectivity", connectivityType(shape.dimension), size, 1, id},
        [&](unsigned int* to) {
            copyConnectivity(part, shape.elements, to);
            if (shape.nodes.isAll())
                return;
            std::vector<std::uint32_t> const rows = rowsInShape(part, shape.nodes);
            std::for_each(to, to + size, [&rows](unsigned int& node) { node = rows[node]; });
        },
        Step(), datasetAttributes(connectivityAttributes(part, shape), report_));
}

void MeshWriter::addElementIds(Part const& part, Shape const& shape, unsigned int id)
{
    auto const* const ids = usableIds(part.elementIds, "elements", part, report_);
    writer_.add<unsigned int>(
        {"Element IDs", DatasetType::ElementIds, shape.elements.size(), 1, id},
        [&](unsigned int* to) { fillIds(ids, shape.elements, to); });
}

} // namespace Exchange
