#include "MeshReader.h"

#include "Topology.h"

#include "common/UsedRows.h"
#include "exchange/Error.h"

#include <gmsh.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <utility>

namespace Gmsh {

namespace {

std::string nameOfDimension(int dimension)
{
    static constexpr std::array<char const*, 4> names = {"Point", "Curve", "Surface", "Volume"};
    return names.at(static_cast<std::size_t>(dimension));
}

std::string nameOfGroup(int dimension, int tag)
{
    std::string name;
    gmsh::model::getPhysicalName(dimension, tag, name);
    return name.empty() ? "Physical " + nameOfDimension(dimension) + " " + std::to_string(tag)
                        : name;
}

/// A group's sign says which way round the entity is.
std::vector<int> groupsOf(int dimension, int tag)
{
    std::vector<int> groups;
    gmsh::model::getPhysicalGroupsForEntity(dimension, tag, groups);
    std::transform(groups.begin(), groups.end(), groups.begin(),
                   [](int group) { return std::abs(group); });
    return groups;
}

std::string nameOfType(int type)
{
    std::string name;
    int dimension = 0;
    int order = 0;
    int nodes = 0;
    int corners = 0;
    std::vector<double> coordinates;
    gmsh::model::mesh::getElementProperties(type, name, dimension, order, nodes, coordinates,
                                            corners);
    return name;
}

Exchange::NamedSet& setOf(Exchange::Part& part, std::string const& name)
{
    for (Exchange::NamedSet& set : part.elementSets)
        if (set.name == name)
            return set;
    part.elementSets.push_back({name, {}});
    return part.elementSets.back();
}

void addRows(std::vector<std::uint32_t>& rows, std::size_t first, std::size_t last)
{
    for (std::size_t row = first; row < last; ++row)
        rows.push_back(static_cast<std::uint32_t>(row));
}

/// Gmsh has 32 bits for the tag of an element; what is larger comes back as something else.
void requireWholeTag(std::size_t tag)
{
    if (tag > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        throw Exchange::Error("The file has numbers of elements that are too large for Gmsh.");
}

/// Nodes ascending by their tags, as a model shows them.
void sortByTag(std::vector<std::size_t>& tags, std::vector<double>& coordinates)
{
    if (std::is_sorted(tags.begin(), tags.end()))
        return;
    std::vector<std::size_t> order(tags.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::sort(order.begin(), order.end(),
              [&tags](std::size_t a, std::size_t b) { return tags[a] < tags[b]; });
    std::vector<std::size_t> sortedTags;
    std::vector<double> sortedCoordinates;
    for (std::size_t const row : order) {
        sortedTags.push_back(tags[row]);
        for (std::size_t axis = 0; axis < 3; ++axis)
            sortedCoordinates.push_back(coordinates[3 * row + axis]);
    }
    tags = std::move(sortedTags);
    coordinates = std::move(sortedCoordinates);
}

} // namespace

MeshReader::MeshReader(Exchange::Report& report) : report_(report)
{
    readNodes();
    readElements();
    finishParts();
    addPartOfUnusedNodes();
    indexElements();
}

void MeshReader::readNodes()
{
    std::vector<double> parametric;
    gmsh::model::mesh::getNodes(nodeTags_, coordinates_, parametric, -1, -1, false, false);
    if (nodeTags_.empty())
        throw Exchange::Error("Gmsh finds no nodes in the file.");
    if (nodeTags_.size() >= std::numeric_limits<std::uint32_t>::max())
        throw Exchange::Error("The file has more nodes than a model can hold.");
    sortByTag(nodeTags_, coordinates_);
    rows_.nodeCount = nodeTags_.size();
    rows_.nodes = TagIndex(nodeTags_);
}

void MeshReader::readElements()
{
    gmsh::vectorpair entities;
    gmsh::model::getEntities(entities);
    for (DimensionAndTag const& entity : entities) {
        reportWhatIsLeftOut(entity);
        addEntity(entity);
    }
}

void MeshReader::reportWhatIsLeftOut(DimensionAndTag const& entity)
{
    std::vector<int> partitions;
    gmsh::model::getPartitions(entity.first, entity.second, partitions);
    if (!partitions.empty())
        report_.warn("The partitions of the mesh were left out.");
    int master = entity.second;
    std::vector<std::size_t> nodes;
    std::vector<std::size_t> masterNodes;
    std::vector<double> transformation;
    gmsh::model::mesh::getPeriodicNodes(entity.first, entity.second, master, nodes, masterNodes,
                                        transformation);
    if (master != entity.second)
        report_.warn("The periodic links of the mesh were left out.");
}

MeshReader::Growing& MeshReader::growingOf(DimensionAndTag const& entity,
                                           std::vector<int> const& groups)
{
    if (!groups.empty()) {
        auto const [found, isNew] =
            partOfGroup_.try_emplace({entity.first, groups.front()}, growing_.size());
        if (!isNew)
            return growing_[found->second];
    }
    Growing growing;
    growing.part.offsets = {0};
    if (groups.empty()) {
        growing.part.name = nameOfDimension(entity.first) + " " + std::to_string(entity.second);
        growing.part.attributes.emplace_back("EntityTag", entity.second);
    } else {
        growing.part.name = nameOfGroup(entity.first, groups.front());
        growing.part.attributes.emplace_back("PhysicalTag", groups.front());
    }
    growing_.push_back(std::move(growing));
    return growing_.back();
}

void MeshReader::addEntity(DimensionAndTag const& entity)
{
    std::vector<int> types;
    std::vector<std::vector<std::size_t>> tags;
    std::vector<std::vector<std::size_t>> nodes;
    gmsh::model::mesh::getElements(types, tags, nodes, entity.first, entity.second);
    if (types.empty())
        return;
    std::vector<int> const groups = groupsOf(entity.first, entity.second);
    Growing& growing = growingOf(entity, groups);
    std::size_t const first = growing.part.elementCount();
    for (std::size_t i = 0; i < types.size(); ++i)
        addElementsOfType(growing, types[i], tags[i], nodes[i]);
    for (std::size_t i = 1; i < groups.size(); ++i)
        addRows(setOf(growing.part, nameOfGroup(entity.first, groups[i])).rows, first,
                growing.part.elementCount());
}

void MeshReader::addElementsOfType(Growing& growing, int type, std::vector<std::size_t> const& tags,
                                   std::vector<std::size_t> const& nodes)
{
    Topology const topology = topologyOf(type);
    if (topology.type == nullptr) {
        report_.unknownElements(nameOfType(type), tags.size());
        return;
    }
    std::size_t const size = topology.type->nodeCount;
    if (nodes.size() != tags.size() * size)
        throw Exchange::Error("The file is damaged: the nodes of its elements are missing.");
    Exchange::Part& part = growing.part;
    for (std::size_t i = 0; i < tags.size(); ++i) {
        requireWholeTag(tags[i]);
        part.types.push_back(topology.type);
        part.elementIds.push_back(static_cast<std::int64_t>(tags[i]));
        part.offsets.push_back(part.offsets.back() + size);
        for (std::size_t n = 0; n < size; ++n) {
            std::size_t const place = topology.order.empty() ? n : topology.order[n];
            std::uint32_t const row = rows_.nodes.rowOf(nodes[i * size + place]);
            if (row == TagIndex::none)
                throw Exchange::Error("The file is damaged: the element " +
                                      std::to_string(tags[i]) + " has a node that is not there.");
            growing.connectivity.push_back(row);
        }
    }
}

void MeshReader::finishNodes(Exchange::Part& part, std::vector<std::uint32_t> rows)
{
    for (std::uint32_t const row : rows) {
        part.nodeIds.push_back(static_cast<std::int64_t>(nodeTags_[row]));
        for (std::size_t axis = 0; axis < 3; ++axis)
            part.coordinates.push_back(coordinates_[3 * std::size_t(row) + axis]);
    }
    PartRows partRows;
    partRows.nodes = std::move(rows);
    partRows.firstElement = rows_.elementCount;
    partRows.elementCount = part.elementCount();
    rows_.elementCount += part.elementCount();
    rows_.parts.push_back(std::move(partRows));
}

void MeshReader::finishParts()
{
    for (Growing& growing : growing_) {
        Common::UsedRows used(growing.connectivity);
        for (std::uint32_t& node : growing.connectivity)
            node = used.placeOf(node);
        growing.part.connectivity = std::move(growing.connectivity);
        finishNodes(growing.part, std::move(used).takeRows());
        parts_.push_back(std::move(growing.part));
        growing = {};
    }
    growing_.clear();
}

void MeshReader::addPartOfUnusedNodes()
{
    std::vector<bool> isUsed(rows_.nodeCount);
    for (PartRows const& part : rows_.parts)
        for (std::uint32_t const node : part.nodes)
            isUsed[node] = true;
    std::vector<std::uint32_t> unused;
    for (std::size_t i = 0; i < isUsed.size(); ++i)
        if (!isUsed[i])
            unused.push_back(static_cast<std::uint32_t>(i));
    if (unused.empty())
        return;
    Exchange::Part part;
    part.name = "Nodes without elements";
    finishNodes(part, std::move(unused));
    parts_.push_back(std::move(part));
}

void MeshReader::indexElements()
{
    std::vector<std::size_t> tags;
    tags.reserve(rows_.elementCount);
    for (Exchange::Part const& part : parts_)
        for (std::int64_t const id : part.elementIds)
            tags.push_back(static_cast<std::size_t>(id));
    rows_.elements = TagIndex(tags);
}

} // namespace Gmsh
