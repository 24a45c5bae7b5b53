#include "EnSightMeshWalker.h"

#include <algorithm>

namespace VtkRead {

namespace {

using Words = EnSightFile::Words;
using Counts = std::array<std::uint64_t, 3>;

constexpr std::uint64_t axes = 3;
constexpr std::uint64_t realWidth = 12;
constexpr std::uint64_t goldWidth = 10;
constexpr std::uint64_t oldWidth = 8;
constexpr std::uint64_t oldRealsPerLine = 6;
constexpr std::uint64_t oldMarksPerLine = 10;

/// Of numbers that make no sense, some that are larger than any file.
std::uint64_t product(Counts const& factors)
{
    constexpr std::uint64_t limit = std::uint64_t{1} << 32U;
    std::uint64_t result = 1;
    for (std::uint64_t const factor : factors)
        result = std::min(limit, result) * factor;
    return std::min(limit << 8U, result);
}

Counts cellsBetween(Counts nodes)
{
    for (std::uint64_t& count : nodes)
        count = count > 1 ? count - 1 : count;
    return nodes;
}

} // namespace

EnSightMeshWalker::EnSightMeshWalker(EnSightFile& file, bool isGold) : file_(file)
{
    mesh_.isGold = isGold;
}

EnSightMesh EnSightMeshWalker::walk()
{
    beginStep();
    file_.description();
    mesh_.hasNodeIds = readsIds();
    mesh_.hasElementIds = readsIds();
    while (auto const words = file_.nextSection())
        readSection(*words);
    if (!file_.isSeries())
        requireElements();
    return mesh_;
}

EnSightMesh EnSightMeshWalker::walkMeasured()
{
    constexpr std::uint64_t narrowest = 11;
    beginStep();
    if (file_.section() != Words{"particle", "coordinates"})
        file_.raiseUnknown();
    mesh_.isGold = false;
    mesh_.sharedNodes = file_.count();
    skipRows(mesh_.sharedNodes, axes, true, narrowest);
    return mesh_;
}

void EnSightMeshWalker::beginStep()
{
    bool const beginsWithFormat = !file_.isText() && !file_.isSeries();
    if (beginsWithFormat)
        file_.description();
    file_.beginStep();
}

bool EnSightMeshWalker::readsIds()
{
    Words const words = file_.section();
    if (words.size() < axes || words[1] != "id")
        file_.raiseUnknown();
    return words[2] == "given" || words[2] == "ignore";
}

void EnSightMeshWalker::readSection(Words const& words)
{
    std::string const& word = words.front();
    if (word == "part")
        readPart(words);
    else if (word == "extents")
        file_.skip({2 * axes, 2, realWidth});
    else if (word == "coordinates")
        readNodes();
    else if (word == "block")
        readBlock(words);
    else if (EnSightMesh::isElementType(word))
        readElements(word);
    else
        file_.raiseUnknown();
}

void EnSightMeshWalker::readPart(Words const& words)
{
    std::uint64_t const number = mesh_.isGold ? file_.count() : file_.numberOfPart(words);
    mesh_.parts.push_back({number, 0, {}});
    isVisible_ = false;
    file_.description();
}

EnSightMesh::Part& EnSightMeshWalker::part()
{
    if (mesh_.parts.empty())
        file_.raiseUnknown();
    return mesh_.parts.back();
}

void EnSightMeshWalker::readNodes()
{
    std::uint64_t const count = file_.count();
    if (!mesh_.isGold) {
        mesh_.sharedNodes = count;
        bool const areIdsInRows = mesh_.hasNodeIds && file_.isText();
        if (mesh_.hasNodeIds && !areIdsInRows)
            mesh_.hasOwnNodeIds = !file_.skipRunningIds(count);
        return skipRows(count, axes, areIdsInRows, realWidth);
    }
    part().nodes = count;
    isVisible_ = count == 0;
    if (mesh_.hasNodeIds)
        skipIds(count);
    for (std::uint64_t i = 0; i < axes; ++i)
        skipReals(count);
}

void EnSightMeshWalker::readElements(std::string const& type)
{
    std::uint64_t const count = file_.count();
    if (!part().elements.emplace(type, count).second)
        throw EnSightFile::Unknown();
    isVisible_ = true;
    std::uint64_t const nodes = EnSightMesh::nodesOf(type);
    if (!mesh_.isGold && nodes > 0)
        return skipRows(count, nodes, mesh_.hasElementIds, oldWidth);
    if (mesh_.hasElementIds)
        skipIds(count);
    if (nodes > 0)
        file_.skip({count * nodes, nodes, goldWidth});
    else if (type.find("nsided") != std::string::npos)
        readPolygons(count);
    else
        readPolyhedra(count);
}

void EnSightMeshWalker::readPolygons(std::uint64_t count)
{
    skipLinesOfNodes(count, file_.add(count));
}

void EnSightMeshWalker::readPolyhedra(std::uint64_t count)
{
    std::uint64_t const faces = file_.add(count).sum;
    readPolygons(faces);
}

void EnSightMeshWalker::skipLinesOfNodes(std::uint64_t lines, EnSightFile::Tally const& nodes)
{
    if (!file_.isText() || lines == 0)
        return file_.skip({nodes.sum, 1, goldWidth});
    file_.skip({lines - 1, 1, 1});
    file_.skip({nodes.last, nodes.last, goldWidth});
}

void EnSightMeshWalker::readBlock(Words const& words)
{
    requireKnown(words);
    Counts const size = file_.threeCounts();
    part().nodes = product(size);
    part().elements["block"] = product(cellsBetween(size));
    isVisible_ = true;
    bool const isBlanked = words.back() == "iblanked";
    std::string const kind = words.size() > (isBlanked ? 2 : 1) ? words[1] : std::string();
    part().isBlanked = isBlanked;
    part().kind = kind;
    Counts coordinates = {part().nodes, part().nodes, part().nodes};
    if (kind == "rectilinear")
        coordinates = size;
    else if (kind == "uniform")
        coordinates = {axes, axes, 0};
    for (std::uint64_t const count : coordinates)
        skipReals(count);
    if (isBlanked)
        file_.skip(mesh_.isGold ? EnSightFile::Numbers{part().nodes, 1, goldWidth}
                                : EnSightFile::Numbers{part().nodes, oldMarksPerLine, oldWidth});
}

void EnSightMeshWalker::requireKnown(Words const& kindsOfBlock) const
{
    Words const known = mesh_.isGold ? Words{"iblanked", "curvilinear", "rectilinear", "uniform"}
                                     : Words{"iblanked"};
    bool const areKnown =
        std::all_of(kindsOfBlock.begin() + 1, kindsOfBlock.end(), [&](std::string const& kind) {
            return std::find(known.begin(), known.end(), kind) != known.end();
        });
    if (!areKnown)
        file_.raiseUnknown();
}

void EnSightMeshWalker::skipIds(std::uint64_t count)
{
    file_.skip({count, 1, goldWidth});
}

void EnSightMeshWalker::skipRows(std::uint64_t count, std::uint64_t perRow, bool haveIds,
                                 std::uint64_t width)
{
    // Only in a text they are in the rows.
    bool const isRowLonger = haveIds && file_.isText();
    if (haveIds && !isRowLonger)
        skipIds(count);
    std::uint64_t const numbers = isRowLonger ? perRow + 1 : perRow;
    file_.skip({count * numbers, numbers, width});
}

void EnSightMeshWalker::skipReals(std::uint64_t count)
{
    file_.skip({count, mesh_.isGold ? 1 : oldRealsPerLine, realWidth});
}

void EnSightMeshWalker::requireElements() const
{
    if (!isVisible_)
        file_.raiseEnd();
}

} // namespace VtkRead
