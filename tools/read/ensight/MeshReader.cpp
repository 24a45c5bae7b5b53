#include "MeshReader.h"

#include <common/UsedRows.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace EnSight {

namespace {

using Exchange::ElementType;

/// How many nodes that take no bytes in a file, those of uniform and rectilinear blocks, a case may
/// have without variables.
constexpr std::uint64_t freeLatticeNodes = std::uint64_t{1} << 22U;

bool isSection(Words const& words, Words const& allowed)
{
    return std::all_of(words.begin() + 1, words.end(),
                       [&](std::string const& word) { return contains(allowed, word); });
}

std::vector<std::uint32_t> rowsFromZero(std::size_t count)
{
    std::vector<std::uint32_t> rows(count);
    std::iota(rows.begin(), rows.end(), std::uint32_t{0});
    return rows;
}

std::string counted(std::size_t count, std::string const& kind, std::string const& part)
{
    return std::to_string(count) + " " + kind + (count == 1 ? " element" : " elements") + " of '" +
           part + "'" + (count == 1 ? " was" : " were") + " left out.";
}

/// From the cell's first node: along one direction, then round a face, then round the one opposite.
std::vector<std::uint64_t> cornersOfCell(std::array<std::uint64_t, axes> const& size)
{
    std::vector<std::uint64_t> corners = {0};
    std::uint64_t stride = 1;
    for (std::uint64_t const count : size) {
        std::vector<std::uint64_t> opposite = corners;
        if (opposite.size() == 2)
            std::swap(opposite[0], opposite[1]);
        for (std::uint64_t& corner : opposite)
            corner += stride;
        if (count > 1)
            corners.insert(corners.end(), opposite.begin(), opposite.end());
        stride *= count;
    }
    return corners;
}

ElementType const* typeOfCell(std::size_t corners)
{
    constexpr std::size_t solid = 8;
    if (corners == solid)
        return ElementType::find(3, corners);
    return ElementType::find(corners > 2 ? 2 : 1, corners);
}

std::array<std::uint64_t, axes> cellsBetween(std::array<std::uint64_t, axes> nodes)
{
    for (std::uint64_t& count : nodes)
        count = count > 1 ? count - 1 : count;
    return nodes;
}

} // namespace

MeshReader::MeshReader(DataFile& file, std::uint64_t bytesOfVariables, Exchange::Report& report)
    : file_(file), report_(report), mostLatticeNodes_(std::max(freeLatticeNodes, bytesOfVariables))
{
    mesh_.path = file.path();
}

Mesh MeshReader::read(bool hasElements)
{
    file_.description();
    nodeIds_ = readIds();
    elementIds_ = readIds();
    while (auto const words = file_.nextSection())
        readSection(*words);
    if (hasElements && !isVisible_ && !file_.isSeries())
        file_.raiseEnd();
    finishPart();
    if (hasElements)
        addUnusedNodes();
    return std::move(mesh_);
}

Mesh MeshReader::readMeasured()
{
    if (file_.section() != Words{"particle", "coordinates"})
        file_.raiseUnknown();
    // Measured points always have ids, even where the mesh has none.
    nodeIds_ = Ids::Given;
    readSharedNodes();
    if (file_.nextSection())
        file_.raiseUnknown();
    std::size_t const count = mesh_.sharedNodeCount;
    MeshPart points;
    points.part.name = "Measured points";
    points.part.types.assign(count, ElementType::find("Point"));
    points.part.connectivity = rowsFromZero(count);
    points.part.offsets.resize(count + 1);
    std::iota(points.part.offsets.begin(), points.part.offsets.end(), std::uint64_t{0});
    points.blocks = {{"point", 0, count}};
    points.elementCount = count;
    points.elements = Exchange::RowSelection(count);
    points.sharedNodes = rowsFromZero(count);
    takeSharedNodes(points);
    mesh_.parts.push_back(std::move(points));
    return std::move(mesh_);
}

MeshReader::Ids MeshReader::readIds()
{
    Words const words = file_.section();
    if (words.size() < axes || words[1] != "id")
        file_.raiseUnknown();
    if (words[2] == "given")
        return Ids::Given;
    if (words[2] == "ignore")
        return Ids::Ignored;
    if (words[2] != "off" && words[2] != "assign")
        file_.raiseUnknown();
    return Ids::None;
}

void MeshReader::readSection(Words const& words)
{
    std::string const& word = words.front();
    if (word == "part")
        startPart(words);
    else if (word == "extents")
        file_.reals(2 * axes);
    else if (word == "coordinates")
        file_.isGold() ? readNodes() : readSharedNodes();
    else if (word == "block")
        readBlock(words);
    else if (word == "ghost_flags" || word == "node_ids" || word == "element_ids")
        readOfBlock(word);
    else if (Topology const* const topology = topologyOf(word))
        readElements(word, *topology);
    else
        file_.raiseUnknown();
}

void MeshReader::startPart(Words const& words)
{
    finishPart();
    MeshPart part;
    if (file_.isGold())
        part.number = static_cast<std::int64_t>(file_.count());
    else if (words.size() == 2 && words[1].find_first_not_of("0123456789") == std::string::npos &&
             words[1].size() < std::numeric_limits<std::int64_t>::digits10)
        part.number = std::stoll(words[1]);
    else
        file_.raiseUnknown();
    if (!mesh_.indices.emplace(part.number, mesh_.parts.size()).second)
        file_.raise("has the part " + std::to_string(part.number) + " twice");
    std::string const name = file_.description();
    auto const first = name.find_first_not_of(" \t\r");
    part.part.name = first == std::string::npos
                         ? "Part " + std::to_string(part.number)
                         : name.substr(first, name.find_last_not_of(" \t\r") + 1 - first);
    part.part.offsets = {0};
    mesh_.parts.push_back(std::move(part));
    hasNodes_ = isVisible_ = isStructured_ = false;
    kept_.clear();
    blanks_.clear();
    ghostFlags_.clear();
    ghosts_ = blanked_ = polyhedra_ = 0;
}

void MeshReader::finishPart()
{
    if (mesh_.parts.empty())
        return;
    MeshPart& part = mesh_.parts.back();
    if (isStructured_)
        addCells();
    else if (!file_.isGold())
        takeSharedNodes(part);
    part.elements = kept_.size() == part.elementCount ? Exchange::RowSelection(kept_.size())
                                                      : Exchange::RowSelection(kept_);
    if (ghosts_ > 0)
        report_.warn(counted(ghosts_, "ghost", part.part.name));
    if (blanked_ > 0)
        report_.warn(counted(blanked_, "blanked", part.part.name));
    report_.unknownElements("polyhedron", polyhedra_);
}

MeshPart& MeshReader::part()
{
    if (mesh_.parts.empty())
        file_.raiseUnknown();
    return mesh_.parts.back();
}

void MeshReader::readNodes()
{
    MeshPart& part = this->part();
    if (std::exchange(hasNodes_, true))
        file_.raise("has the nodes of a part twice");
    part.nodeCount = file_.count();
    isVisible_ = part.nodeCount == 0;
    if (nodeIds_ != Ids::None) {
        Integers const ids = file_.integers(part.nodeCount);
        if (nodeIds_ == Ids::Given)
            part.part.nodeIds.assign(ids.begin(), ids.end());
    }
    file_.requireNumbers(axes * part.nodeCount);
    part.part.coordinates.resize(axes * part.nodeCount);
    for (std::size_t axis = 0; axis < axes; ++axis) {
        Reals const values = file_.reals(part.nodeCount);
        for (std::size_t i = 0; i < values.size(); ++i)
            part.part.coordinates[axes * i + axis] = static_cast<double>(values[i]);
    }
}

void MeshReader::readSharedNodes()
{
    if (!mesh_.parts.empty() || std::exchange(hasNodes_, true))
        file_.raiseUnknown();
    std::size_t const count = file_.count();
    auto rows = file_.rowsOfReals(count, axes, nodeIds_ != Ids::None);
    mesh_.sharedNodeCount = count;
    mesh_.sharedCoordinates = std::move(rows.numbers);
    sharedIds_.resize(count);
    std::iota(sharedIds_.begin(), sharedIds_.end(), std::int64_t{1});
    if (nodeIds_ != Ids::Given || std::equal(rows.ids.begin(), rows.ids.end(), sharedIds_.begin()))
        return;
    sharedIds_.assign(rows.ids.begin(), rows.ids.end());
    for (std::size_t i = 0; i < count; ++i)
        rowsOfIds_.emplace_back(rows.ids[i], static_cast<std::uint32_t>(i));
    std::sort(rowsOfIds_.begin(), rowsOfIds_.end());
    auto const isSame = [](auto const& one, auto const& other) { return one.first == other.first; };
    if (std::adjacent_find(rowsOfIds_.begin(), rowsOfIds_.end(), isSame) != rowsOfIds_.end())
        file_.raise("has two nodes of the same id");
}

void MeshReader::readElements(std::string const& keyword, Topology const& topology)
{
    MeshPart& part = this->part();
    if (isStructured_)
        file_.raiseUnknown();
    std::size_t const count = file_.count();
    bool const isKept = topology.type != nullptr && !isGhost(keyword);
    bool const haveIds = elementIds_ != Ids::None;
    isVisible_ = true;
    DataFile::Rows<std::int32_t> rows;
    Integers sizes;
    if (topology.nodeCount > 0 && !file_.isGold()) {
        rows = file_.rowsOfIntegers(count, topology.nodeCount, haveIds);
    } else {
        if (haveIds)
            rows.ids = file_.integers(count);
        std::uint64_t all = count * topology.nodeCount;
        if (topology.nodeCount == 0) {
            sizes = readSizes(count);
            // For polyhedra these are numbers of faces; the sizes of the faces follow.
            if (topology.type == nullptr)
                sizes = readSizes(std::accumulate(sizes.begin(), sizes.end(), std::size_t{0}));
            all = std::accumulate(sizes.begin(), sizes.end(), std::uint64_t{0});
        }
        rows.numbers = file_.integers(all);
    }
    std::size_t const first = part.elementCount;
    if (part.find(keyword) != nullptr)
        file_.raise("has the '" + keyword + "' elements of a part twice");
    part.blocks.push_back({keyword, first, count});
    part.elementCount += count;
    if (isKept) {
        addElements(topology, rows.ids, sizes, rows.numbers);
        kept_.resize(kept_.size() + count);
        std::iota(kept_.end() - static_cast<std::ptrdiff_t>(count), kept_.end(),
                  static_cast<std::uint32_t>(first));
    } else {
        (isGhost(keyword) ? ghosts_ : polyhedra_) += count;
    }
}

MeshReader::Integers MeshReader::readSizes(std::size_t count)
{
    Integers sizes = file_.integers(count);
    if (std::any_of(sizes.begin(), sizes.end(), [](std::int32_t size) { return size < 1; }))
        file_.raise("has a polygon or a polyhedron of nothing");
    return sizes;
}

void MeshReader::addElements(Topology const& topology, Integers const& ids, Integers const& sizes,
                             Integers const& nodes)
{
    Exchange::Part& part = this->part().part;
    std::size_t const size = topology.nodeCount;
    std::size_t const count = size == 0 ? sizes.size() : nodes.size() / size;
    part.types.insert(part.types.end(), count, topology.type);
    part.offsets.reserve(part.offsets.size() + count);
    for (std::size_t i = 0; i < count; ++i)
        part.offsets.push_back(part.offsets.back() +
                               (size == 0 ? static_cast<std::size_t>(sizes[i]) : size));
    part.connectivity.reserve(part.connectivity.size() + nodes.size());
    bool const isSorted = size == 0 || topology.order.empty();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        std::size_t const place = isSorted ? 0 : i % size;
        part.connectivity.push_back(rowOf(nodes[isSorted ? i : i - place + topology.order[place]]));
    }
    if (elementIds_ == Ids::Given)
        part.elementIds.insert(part.elementIds.end(), ids.begin(), ids.end());
}

std::uint32_t MeshReader::rowOf(std::int32_t node) const
{
    auto const row =
        std::lower_bound(rowsOfIds_.begin(), rowsOfIds_.end(), std::pair(node, std::uint32_t{0}));
    if (row != rowsOfIds_.end() && row->first == node)
        return row->second;
    std::size_t const count = file_.isGold() ? mesh_.parts.back().nodeCount : mesh_.sharedNodeCount;
    if (!rowsOfIds_.empty() || node < 1 || static_cast<std::size_t>(node) > count)
        file_.raise("has an element of the node " + std::to_string(node) + ", which is not there");
    return static_cast<std::uint32_t>(node - 1);
}

void MeshReader::readBlock(Words const& words)
{
    MeshPart& part = this->part();
    bool const isKnown =
        isSection(words, file_.isGold() ? Words{"iblanked", "curvilinear", "rectilinear", "uniform",
                                                "with_ghost", "range"}
                                        : Words{"iblanked"});
    if (!isKnown || hasNodes_ || isStructured_ || !part.blocks.empty())
        file_.raiseUnknown();
    Integers const size = file_.integers(axes);
    Integers range;
    if (contains(words, "range"))
        range = file_.integers(2 * axes);
    for (std::size_t axis = 0; axis < axes; ++axis) {
        std::int64_t count = size[axis];
        if (!range.empty())
            count = std::int64_t{range[2 * axis + 1]} - range[2 * axis] + 1;
        if (count < 1)
            file_.raise("has a block without nodes");
        size_[axis] = static_cast<std::uint64_t>(count);
    }
    isStructured_ = isVisible_ = true;
    part.nodeCount = product(size_);
    readBlockCoordinates(words);
    part.elementCount = product(cellsBetween(size_));
    part.blocks = {{"block", 0, part.elementCount}};
    if (contains(words, "iblanked"))
        blanks_ = file_.integers(part.nodeCount);
}

std::uint64_t MeshReader::product(Counts const& factors) const
{
    std::uint64_t result = 1;
    for (std::uint64_t const factor : factors) {
        result *= factor;
        if (result > std::numeric_limits<std::int32_t>::max())
            file_.raise("has a block of more nodes than can be counted");
    }
    return result;
}

/// Coordinates of all nodes, or of those along each axis, or of the first one and the distances.
void MeshReader::readBlockCoordinates(Words const& words)
{
    MeshPart& part = this->part();
    std::vector<double>& coordinates = part.part.coordinates;
    bool const isUniform = contains(words, "uniform");
    bool const isLattice = isUniform || contains(words, "rectilinear");
    if (isLattice)
        countLatticeNodes(part.nodeCount);
    else
        file_.requireNumbers(axes * part.nodeCount);
    std::array<Reals, axes> values;
    for (std::size_t axis = 0; axis < (isUniform ? 2 : axes); ++axis)
        values[axis] = file_.reals(isUniform ? axes : isLattice ? size_[axis] : part.nodeCount);
    coordinates.resize(axes * part.nodeCount);
    for (std::size_t i = 0; i < part.nodeCount; ++i) {
        std::size_t const place[axes] = {i % size_[0], i / size_[0] % size_[1],
                                         i / size_[0] / size_[1]};
        for (std::size_t axis = 0; axis < axes; ++axis)
            coordinates[axes * i + axis] =
                isUniform
                    ? static_cast<double>(values[0][axis]) +
                          static_cast<double>(place[axis]) * static_cast<double>(values[1][axis])
                    : static_cast<double>(values[axis][isLattice ? place[axis] : i]);
    }
}

/// A few bytes tell of any number of such nodes. Those that somebody computed with have values.
void MeshReader::countLatticeNodes(std::uint64_t count)
{
    latticeNodes_ += count;
    if (latticeNodes_ > mostLatticeNodes_)
        file_.raise("has " + std::to_string(latticeNodes_) +
                    " nodes in uniform and rectilinear blocks, more than " +
                    std::to_string(freeLatticeNodes) + " and than the variables have bytes");
}

void MeshReader::readOfBlock(std::string const& keyword)
{
    MeshPart& part = this->part();
    if (!isStructured_)
        file_.raiseUnknown();
    Integers const numbers =
        file_.integers(keyword == "node_ids" ? part.nodeCount : part.elementCount);
    if (keyword == "ghost_flags")
        ghostFlags_ = numbers;
    else if (keyword == "node_ids" && nodeIds_ == Ids::Given)
        part.part.nodeIds.assign(numbers.begin(), numbers.end());
    else if (keyword == "element_ids" && elementIds_ == Ids::Given)
        part.part.elementIds.assign(numbers.begin(), numbers.end());
}

void MeshReader::addCells()
{
    Exchange::Part& part = this->part().part;
    Counts const cells = cellsBetween(size_);
    std::vector<std::uint64_t> const corners = cornersOfCell(size_);
    ElementType const* const type = typeOfCell(corners.size());
    std::size_t const count = this->part().elementCount;
    std::vector<std::uint32_t> nodes(corners.size());
    std::vector<std::int64_t> const ids = std::move(part.elementIds);
    part.elementIds.clear();
    for (std::size_t cell = 0; cell < count; ++cell) {
        std::uint64_t const first =
            cell % cells[0] +
            size_[0] * (cell / cells[0] % cells[1] + size_[1] * (cell / cells[0] / cells[1]));
        for (std::size_t i = 0; i < corners.size(); ++i)
            nodes[i] = static_cast<std::uint32_t>(first + corners[i]);
        if (!isShown(cell, nodes))
            continue;
        kept_.push_back(static_cast<std::uint32_t>(cell));
        part.types.push_back(type);
        part.connectivity.insert(part.connectivity.end(), nodes.begin(), nodes.end());
        part.offsets.push_back(part.connectivity.size());
        if (!ids.empty())
            part.elementIds.push_back(ids[cell]);
    }
}

/// A blanked node takes away the cells around it.
bool MeshReader::isShown(std::size_t cell, std::vector<std::uint32_t> const& nodes)
{
    if (!ghostFlags_.empty() && ghostFlags_[cell] != 0) {
        ++ghosts_;
        return false;
    }
    bool const isBlanked =
        !blanks_.empty() && std::any_of(nodes.begin(), nodes.end(),
                                        [this](std::uint32_t node) { return blanks_[node] == 0; });
    blanked_ += isBlanked ? 1 : 0;
    return !isBlanked;
}

/// Gives a part whose elements name nodes that parts share those nodes that it uses.
void MeshReader::takeSharedNodes(MeshPart& part) const
{
    if (part.number != MeshPart::none) {
        Common::UsedRows used(part.part.connectivity);
        for (std::uint32_t& node : part.part.connectivity)
            node = used.placeOf(node);
        part.sharedNodes = std::move(used).takeRows();
    }
    part.part.coordinates.reserve(axes * part.sharedNodes.size());
    for (std::uint32_t const node : part.sharedNodes) {
        part.part.nodeIds.push_back(sharedIds_[node]);
        auto const first =
            mesh_.sharedCoordinates.begin() + static_cast<std::ptrdiff_t>(axes * node);
        part.part.coordinates.insert(part.part.coordinates.end(), first, first + axes);
    }
}

void MeshReader::addUnusedNodes()
{
    std::vector<bool> isUsed(mesh_.sharedNodeCount);
    for (MeshPart const& part : mesh_.parts)
        for (std::uint32_t const node : part.sharedNodes)
            isUsed[node] = true;
    MeshPart unused;
    unused.part.name = "Nodes without elements";
    for (std::size_t i = 0; i < isUsed.size(); ++i)
        if (!isUsed[i])
            unused.sharedNodes.push_back(static_cast<std::uint32_t>(i));
    if (unused.sharedNodes.empty())
        return;
    takeSharedNodes(unused);
    mesh_.parts.push_back(std::move(unused));
}

} // namespace EnSight
