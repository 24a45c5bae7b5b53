#include "MeshReader.h"

#include "common/UsedRows.h"
#include "exchange/Error.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <utility>

namespace Exodus {

namespace {

/// Row of a node among the sorted ones, of which it has to be one.
std::uint32_t rowAmong(std::vector<std::uint32_t> const& sorted, std::uint32_t node)
{
    return static_cast<std::uint32_t>(std::lower_bound(sorted.begin(), sorted.end(), node) -
                                      sorted.begin());
}

/// The library counts from 1.
std::uint32_t rowOf(std::int64_t number, std::size_t count, char const* what)
{
    if (number < 1 || static_cast<std::size_t>(number) > count)
        throw Exchange::Error(std::string("The file is damaged: it refers to the ") + what + " " +
                              std::to_string(number) + " of " + std::to_string(count) + ".");
    return static_cast<std::uint32_t>(number - 1);
}

void sortAndUnite(std::vector<std::uint32_t>& rows)
{
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
}

std::vector<std::uint64_t> offsetsOf(std::vector<int> const& sizes)
{
    std::vector<std::uint64_t> offsets = {0};
    for (int const size : sizes) {
        if (size < 0)
            throw Exchange::Error("The file is damaged: a polygon has less than no nodes.");
        offsets.push_back(offsets.back() + static_cast<std::uint64_t>(size));
    }
    return offsets;
}

std::vector<std::uint64_t> equalOffsets(std::size_t count, std::size_t size)
{
    std::vector<std::uint64_t> offsets(count + 1);
    for (std::size_t i = 0; i < offsets.size(); ++i)
        offsets[i] = i * size;
    return offsets;
}

Exchange::AttributeList attributesOf(PartRows const& block)
{
    bool const isInt =
        block.id >= std::numeric_limits<int>::min() && block.id <= std::numeric_limits<int>::max();
    Exchange::AttributeList attributes;
    if (isInt)
        attributes.emplace_back("BlockId", static_cast<int>(block.id));
    else
        attributes.emplace_back("BlockId", std::to_string(block.id));
    attributes.emplace_back("BlockType", block.topology);
    return attributes;
}

std::string nameOrId(std::string const& name, std::int64_t id)
{
    return name.empty() ? std::to_string(id) : name;
}

} // namespace

MeshReader::MeshReader(Database const& database, Exchange::Report& report)
    : database_(database), report_(report)
{
    addBlocks();
    addPartOfUnusedNodes();
    addCoordinates();
    addNumbers();
    addSets();
}

void MeshReader::addBlocks()
{
    std::int64_t const count = database_.parameters().num_elem_blk;
    std::vector<std::int64_t> const ids = database_.ids(EX_ELEM_BLOCK, count);
    std::vector<std::string> const names = database_.names(EX_ELEM_BLOCK, count);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        ex_block const parameters = database_.block(ids[i]);
        rows_.blocks.push_back(blockOf(parameters, names[i]));
        addPart(rows_.blocks.back(), parameters);
    }
    std::size_t const last =
        rows_.blocks.empty() ? 0
                             : rows_.blocks.back().firstElement + rows_.blocks.back().elementCount;
    if (last != database_.elementCount())
        throw Exchange::Error("The file is damaged: its blocks have " + std::to_string(last) +
                              " elements, but it says " + std::to_string(database_.elementCount()) +
                              ".");
}

PartRows MeshReader::blockOf(ex_block const& parameters, std::string const& name) const
{
    PartRows block;
    block.id = parameters.id;
    block.name = name.empty() ? "Block " + std::to_string(parameters.id) : name;
    block.topology = parameters.topology;
    block.elementCount = static_cast<std::size_t>(parameters.num_entry);
    if (!rows_.blocks.empty())
        block.firstElement = rows_.blocks.back().firstElement + rows_.blocks.back().elementCount;
    if (isPolygon(block.topology))
        block.elements.type = Exchange::ElementType::find("Polygon");
    else
        block.elements = topologyOf(block.topology, parameters.num_nodes_per_entry,
                                    database_.parameters().num_dim);
    block.isLeftOut = block.elements.type == nullptr && block.elementCount != 0;
    return block;
}

void MeshReader::addPart(PartRows& block, ex_block const& parameters)
{
    Exchange::Part part;
    part.name = block.name;
    part.attributes = attributesOf(block);
    if (block.isLeftOut) {
        std::string const nodes =
            isPolyhedron(block.topology)
                ? std::string()
                : " of " + std::to_string(parameters.num_nodes_per_entry) + " nodes";
        report_.unknownElements(block.topology + nodes, block.elementCount);
    } else if (block.elementCount != 0) {
        addElements(part, block, parameters);
    }
    parts_.push_back(std::move(part));
}

std::vector<std::uint32_t> MeshReader::readNodes(ex_block const& parameters) const
{
    std::vector<std::int64_t> const numbers = database_.connectivity(parameters);
    std::vector<std::uint32_t> rows(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i)
        rows[i] = rowOf(numbers[i], database_.nodeCount(), "node");
    return rows;
}

std::vector<std::uint64_t> MeshReader::readOffsets(ex_block const& parameters) const
{
    if (isPolygon(parameters.topology))
        return offsetsOf(database_.polygonSizes(parameters));
    return equalOffsets(static_cast<std::size_t>(parameters.num_entry),
                        static_cast<std::size_t>(parameters.num_nodes_per_entry));
}

void MeshReader::addElements(Exchange::Part& part, PartRows& block,
                             ex_block const& parameters) const
{
    std::vector<std::uint32_t> const rows = readNodes(parameters);
    part.types.assign(block.elementCount, block.elements.type);
    part.offsets = readOffsets(parameters);
    if (part.offsets.back() != rows.size())
        throw Exchange::Error("The file is damaged: the polygons of the element block " +
                              std::to_string(block.id) + " do not have the nodes of the block.");

    Common::UsedRows used(rows);
    std::vector<std::size_t> const& order = block.elements.order;
    part.connectivity.resize(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::size_t const place = order.empty() ? 0 : i % order.size();
        std::size_t const from = order.empty() ? i : i - place + order[place];
        part.connectivity[i] = used.placeOf(rows[from]);
    }
    block.nodes = std::move(used).takeRows();
}

void MeshReader::addPartOfUnusedNodes()
{
    std::vector<bool> isUsed(database_.nodeCount());
    for (PartRows const& block : rows_.blocks)
        for (std::uint32_t const node : block.nodes)
            isUsed[node] = true;
    for (std::size_t i = 0; i < isUsed.size(); ++i)
        if (!isUsed[i])
            rows_.unusedNodes.push_back(static_cast<std::uint32_t>(i));
    if (rows_.unusedNodes.empty())
        return;
    Exchange::Part part;
    part.name = "Nodes without elements";
    parts_.push_back(std::move(part));
}

void MeshReader::addCoordinates()
{
    std::array<Reals, 3> const axes = database_.coordinates();
    auto const dimension = static_cast<std::size_t>(database_.parameters().num_dim);
    for (std::size_t p = 0; p < parts_.size(); ++p) {
        std::vector<std::uint32_t> const& nodes = rows_.nodesOfPart(p);
        parts_[p].coordinates.resize(3 * nodes.size());
        for (std::size_t i = 0; i < nodes.size(); ++i)
            for (std::size_t axis = 0; axis < dimension; ++axis)
                parts_[p].coordinates[3 * i + axis] = realAt(axes[axis], nodes[i]);
    }
}

void MeshReader::addNumbers()
{
    std::vector<std::int64_t> const nodes = database_.numbers(EX_NODE_MAP, database_.nodeCount());
    for (std::size_t p = 0; p < parts_.size(); ++p)
        for (std::uint32_t const node : rows_.nodesOfPart(p))
            parts_[p].nodeIds.push_back(nodes[node]);
    std::vector<std::int64_t> const elements =
        database_.numbers(EX_ELEM_MAP, database_.elementCount());
    for (std::size_t p = 0; p < rows_.blocks.size(); ++p) {
        auto const first =
            elements.begin() + static_cast<std::ptrdiff_t>(rows_.blocks[p].firstElement);
        parts_[p].elementIds.assign(first,
                                    first + static_cast<std::ptrdiff_t>(parts_[p].elementCount()));
    }
}

void MeshReader::addSets()
{
    ex_init_params const& parameters = database_.parameters();
    auto const nodeSets = database_.ids(EX_NODE_SET, parameters.num_node_sets);
    auto const nodeSetNames = database_.names(EX_NODE_SET, parameters.num_node_sets);
    for (std::size_t i = 0; i < nodeSets.size(); ++i)
        addNodeSet(nodeSets[i], nameOrId(nodeSetNames[i], nodeSets[i]));
    auto const elementSets = database_.ids(EX_ELEM_SET, parameters.num_elem_sets);
    auto const elementSetNames = database_.names(EX_ELEM_SET, parameters.num_elem_sets);
    for (std::size_t i = 0; i < elementSets.size(); ++i)
        addElementSet(elementSets[i], nameOrId(elementSetNames[i], elementSets[i]));
}

void MeshReader::addNodeSet(std::int64_t id, std::string const& name)
{
    std::vector<std::uint32_t> rows;
    for (std::int64_t const entry : database_.setEntries(EX_NODE_SET, id))
        rows.push_back(rowOf(entry, database_.nodeCount(), "node"));
    sortAndUnite(rows);
    if (rows.empty())
        report_.warn("The node set '" + name + "' is empty and was left out.");
    for (std::size_t p = 0; p < parts_.size(); ++p) {
        std::vector<std::uint32_t> const& nodes = rows_.nodesOfPart(p);
        std::vector<std::uint32_t> common;
        std::set_intersection(rows.begin(), rows.end(), nodes.begin(), nodes.end(),
                              std::back_inserter(common));
        if (common.empty())
            continue;
        for (std::uint32_t& node : common)
            node = rowAmong(nodes, node);
        parts_[p].nodeSets.push_back({name, std::move(common)});
    }
}

void MeshReader::addElementSet(std::int64_t id, std::string const& name)
{
    std::vector<std::uint32_t> rows;
    for (std::int64_t const entry : database_.setEntries(EX_ELEM_SET, id))
        rows.push_back(rowOf(entry, database_.elementCount(), "element"));
    sortAndUnite(rows);
    if (rows.empty())
        report_.warn("The element set '" + name + "' is empty and was left out.");
    for (std::size_t p = 0; p < rows_.blocks.size(); ++p) {
        std::size_t const first = rows_.blocks[p].firstElement;
        auto const begin = std::lower_bound(rows.begin(), rows.end(), first);
        auto const end = std::lower_bound(begin, rows.end(), first + parts_[p].elementCount());
        std::vector<std::uint32_t> inBlock(begin, end);
        for (std::uint32_t& row : inBlock)
            row -= static_cast<std::uint32_t>(first);
        if (!inBlock.empty())
            parts_[p].elementSets.push_back({name, std::move(inBlock)});
    }
}

} // namespace Exodus
