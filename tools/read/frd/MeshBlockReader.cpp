// The node block and the element block. Lines, here in the long format (the short one has numbers
// of 5 columns instead of 10, and 15 instead of 10 nodes of an element in a line):
//
//   "    2C" 18 blanks, number of nodes (12 columns), 37 blanks, format (1 column)
//   " -1" number (10), x, y, z (12 each)                          one line for each node
//   " -3"
//   "    3C" 18 blanks, number of elements (12), 37 blanks, format (1)
//   " -1" number (10), type, group, material (5 each)             two or more lines
//   " -2" up to 10 node numbers (10 each), repeated as needed     for each element
//   " -3"
//
// Binary records (no end mark follows them):
//
//   int32 number | real x | real y | real z                       for each node
//   int32 number | int32 type | int32 group | int32 material | int32 node, ...   for each element

#include "MeshBlockReader.h"

#include "BinaryRecord.h"
#include "Columns.h"
#include "Number.h"

#include <algorithm>
#include <cctype>
#include <limits>

namespace Frd {

namespace {

constexpr std::size_t elementHeadSize = 4 * sizeof(std::int32_t);

} // namespace

MeshBlockReader::BlockHead MeshBlockReader::parseHead(std::string const& head)
{
    Columns columns(stream_, head);
    columns.skip(6 + 18);
    bool const isCounted = !columns.isBlank(12);
    std::int64_t const count = columns.integerOrZero(12, "number of records");
    columns.skip(37);
    BlockFormat const format(stream_, columns.integer(1, "format"));
    columns.end();
    if (count < 0)
        stream_.fail("The number of records is negative.");
    if (isCounted)
        return {static_cast<std::uint64_t>(count), format};
    if (format.isBinary())
        stream_.fail("The number of records is missing.");
    return {std::nullopt, format};
}

void MeshBlockReader::readNodes(std::string const& head)
{
    BlockHead const block = parseHead(head);
    mesh_.setHoldsDoubles(block.format.holdsDoubles());
    if (block.format.isBinary())
        readNodeRecords(block);
    else
        readNodeLines(block);
}

void MeshBlockReader::readNodeLines(BlockHead const& head)
{
    std::string line;
    for (stream_.requireLine(line, "the node block"); isRecord(line, " -1");
         stream_.requireLine(line, "the node block")) {
        Columns columns(stream_, line);
        columns.skip(3);
        std::int64_t const id = columns.integer(head.format.numberWidth(), "node number");
        double const x = columns.real(Columns::realWidth, "x coordinate");
        double const y = columns.real(Columns::realWidth, "y coordinate");
        double const z = columns.real(Columns::realWidth, "z coordinate");
        columns.end();
        addNode(id, {x, y, z});
    }
    if (!isBareRecord(line, " -3"))
        stream_.fail("Neither a node (-1) nor the end of the node block (-3) stands here.");
    checkCountOf("nodes", mesh_.nodes().size(), head);
}

/// The end of a block of lines has a mark of its own, so that more of them than announced can be
/// told from what follows. Fewer of them may be a loss.
void MeshBlockReader::checkCountOf(char const* what, std::size_t found, BlockHead const& head)
{
    if (head.count && found > *head.count)
        warnOfMore(stream_, found, *head.count, what);
    else if (head.count)
        checkCount(stream_, found, *head.count, what);
}

void MeshBlockReader::readNodeRecords(BlockHead const& head)
{
    std::size_t const realSize = head.format.realSize();
    std::size_t const recordSize = sizeof(std::int32_t) + 3 * realSize;
    stream_.requireRecords(*head.count, recordSize, "the node block");
    for (std::uint64_t i = 0; i < *head.count; ++i) {
        BinaryRecord record(stream_.readRecord(recordSize, "the node block"));
        std::int64_t const id = record.integer();
        double const x = record.real(realSize);
        double const y = record.real(realSize);
        double const z = record.real(realSize);
        addNode(id, {x, y, z});
    }
}

void MeshBlockReader::addNode(std::int64_t id, std::array<double, 3> const& coordinates)
{
    if (!mesh_.addNode({checkedId(id, "node"), coordinates}))
        stream_.fail("Node " + std::to_string(id) + " is defined twice.");
}

void MeshBlockReader::readElements(std::string const& head)
{
    BlockHead const block = parseHead(head);
    if (block.format.isBinary())
        readElementRecords(block);
    else
        readElementLines(block);
}

void MeshBlockReader::readElementLines(BlockHead const& head)
{
    std::string line;
    for (stream_.requireLine(line, "the element block"); isRecord(line, " -1");
         stream_.requireLine(line, "the element block")) {
        Columns columns(stream_, line);
        columns.skip(3);
        ElementHead element{};
        element.id = columns.integer(head.format.numberWidth(), "element number");
        element.type = columns.integer(5, "element type");
        element.group = columns.integer(5, "group number");
        element.material = parseMaterial(columns);
        readElementNodeLines(head.format, typeOf(element).nodeCount);
        addElement(element);
    }
    if (!isBareRecord(line, " -3"))
        stream_.fail("Neither an element (-1) nor the end of the element block (-3) stands here.");
    checkCountOf("elements", mesh_.elements().size(), head);
}

/// Solvers of fluids write the material's name in place of its number.
std::int64_t MeshBlockReader::parseMaterial(Columns& columns)
{
    std::string_view const text = columns.rest();
    std::string const name(trimmed(text));
    bool const isName = !name.empty() && std::isalpha(static_cast<unsigned char>(name.front()));
    if (isName)
        return mesh_.materialCalled(name);
    std::int64_t const number = columns.integer(5, "material number");
    columns.end();
    return number;
}

void MeshBlockReader::readElementNodeLines(BlockFormat const& format, std::size_t nodeCount)
{
    elementNodes_.clear();
    std::string line;
    while (elementNodes_.size() < nodeCount) {
        stream_.requireLine(line, "the element block");
        if (!isRecord(line, " -2"))
            stream_.fail("An element's nodes (-2) are missing.");
        Columns columns(stream_, line);
        columns.skip(3);
        std::size_t const left = nodeCount - elementNodes_.size();
        for (std::size_t i = std::min(left, format.nodesPerLine()); i > 0; --i)
            takeElementNode(columns.integer(format.numberWidth(), "node number"));
        columns.end();
    }
}

void MeshBlockReader::readElementRecords(BlockHead const& head)
{
    stream_.requireRecords(*head.count, elementHeadSize, "the element block");
    for (std::uint64_t i = 0; i < *head.count; ++i)
        readElementRecord();
    while (hasElementRecord())
        readElementRecord();
    if (mesh_.elements().size() > *head.count)
        warnOfMore(stream_, mesh_.elements().size(), *head.count, "elements");
}

/// Whether an element follows instead of a line: the bytes of its type are no characters.
bool MeshBlockReader::hasElementRecord()
{
    std::string const bytes = stream_.peek(elementHeadSize);
    if (bytes.size() < elementHeadSize)
        return false;
    BinaryRecord record(bytes.data());
    record.integer();
    return Topology::find(record.integer()) != nullptr;
}

void MeshBlockReader::readElementRecord()
{
    BinaryRecord record(stream_.readRecord(elementHeadSize, "the element block"));
    ElementHead element{};
    element.id = record.integer();
    element.type = record.integer();
    element.group = record.integer();
    element.material = record.integer();
    std::size_t const nodeCount = typeOf(element).nodeCount;
    std::size_t const size = nodeCount * sizeof(std::int32_t);
    BinaryRecord nodes(stream_.readRecord(size, "the element block"));
    elementNodes_.clear();
    for (std::size_t n = 0; n < nodeCount; ++n)
        takeElementNode(nodes.integer());
    addElement(element);
}

Topology const& MeshBlockReader::typeOf(ElementHead const& element)
{
    Topology const* const type = Topology::find(element.type);
    if (type == nullptr)
        stream_.fail("Element " + std::to_string(element.id) + " has the unknown type " +
                     std::to_string(element.type) + ".");
    return *type;
}

void MeshBlockReader::takeElementNode(std::int64_t nodeId)
{
    auto const index = mesh_.indexOf(nodeId);
    if (!index)
        stream_.fail("An element refers to node " + std::to_string(nodeId) +
                     ", which does not exist.");
    elementNodes_.push_back(*index);
}

void MeshBlockReader::addElement(ElementHead const& element)
{
    std::uint32_t const id = checkedId(element.id, "element");
    if (!mesh_.addElement(id, typeOf(element), element.group, element.material, elementNodes_))
        stream_.fail("Element " + std::to_string(element.id) + " is defined twice.");
}

std::uint32_t MeshBlockReader::checkedId(std::int64_t id, char const* what)
{
    if (id < 0 || id > std::numeric_limits<std::uint32_t>::max())
        stream_.fail("The " + std::string(what) + " number " + std::to_string(id) +
                     " is not within 0 to 4294967295.");
    return static_cast<std::uint32_t>(id);
}

} // namespace Frd
