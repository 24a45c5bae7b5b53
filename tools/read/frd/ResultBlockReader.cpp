// Parameter records and result blocks. Lines, here in the long format (the short one has node
// numbers of 5 columns instead of 10):
//
//   "    1P" name, values                               before a block, as many as there are
//   "  100C" set (6), value (12), number of nodes (12), text (20), kind of analysis (2),
//            step number (5), analysis (10), format (2)
//   " -4" 2 blanks, name (8), number of components (5), 1 (5)
//   " -5" 2 blanks, name (8), menu (5), entity, row, column, computed? (5 each), text (8)
//                                                              for each component
//   " -1" node (10), up to 6 values (12 each)                  for each node
//   " -2" blanks (10), up to 6 values (12 each)                repeated as needed
//   " -3"
//
// Binary records (no end mark follows them); only stored components have values:
//
//   int32 node | real value, ...                               for each node

#include "ResultBlockReader.h"

#include "BinaryRecord.h"
#include "Columns.h"
#include "Number.h"

#include <algorithm>

namespace Frd {

namespace {

constexpr std::size_t valuesPerLine = 6;
constexpr char const* within = "a result block";

/// The solver has a tab in place of three blanks in the components of some results, such as those
/// of random vectors and of normals.
std::string withoutTabs(std::string line)
{
    for (auto at = line.find('\t'); at != std::string::npos; at = line.find('\t', at))
        line.replace(at, 1, "   ");
    return line;
}

bool takesNode(std::string const& line)
{
    return isRecord(line, " -1");
}

} // namespace

void ResultBlockReader::takeParameter(std::string const& line)
{
    std::string const text(trimmed(std::string_view(line).substr(6)));
    auto const nameEnd = std::min(text.find(' '), text.size());
    std::string const name = text.substr(0, nameEnd);
    Columns columns(stream_, std::string_view(text).substr(nameEnd));
    if (name.empty())
        stream_.fail("The parameter record (1P) is empty.");
    if (name == "STEP") {
        // "    1PSTEP" leaves its 26, 12 and 12 columns to the numbers of block, increment, step.
        Columns numbers(stream_, std::string_view(line).substr(10));
        numbers.integer(26, "block number");
        std::int32_t const increment = numbers.shortInteger(12, "increment number");
        pending_.step = StepNumbers{increment, numbers.shortInteger(12, "step number")};
        numbers.end();
    } else if (name == "MODE") {
        pending_.mode = columns.shortInteger(text.size(), "mode number");
    } else {
        pending_.parameters[name] = columns.text(text.size());
    }
    hasPending_ = true;
}

void ResultBlockReader::read(std::string const& head, ResultBlock& block)
{
    block = ResultBlock{};
    BlockHead const parsed = parseHead(head, block);
    giveParameters(block);
    readComponents(block);
    block.holdsDoubles = parsed.format.holdsDoubles();
    ++blockNumber_;
    lastBlock_.resize(mesh_.nodes().size());
    strangers_.clear();
    if (parsed.format.isBinary())
        readRecords(parsed, block);
    else
        readLines(parsed, block);
    warnOfStrangers(block);
}

void ResultBlockReader::end() const
{
    if (hasPending_)
        stream_.fail("No result block follows the parameter records (1P).");
}

ResultBlockReader::BlockHead ResultBlockReader::parseHead(std::string const& head,
                                                          ResultBlock& block)
{
    Columns columns(stream_, head);
    columns.skip(6 + 6);
    block.value = columns.real(Columns::realWidth, "value of the step");
    std::int64_t const count = columns.integer(12, "number of nodes");
    block.text = columns.text(20);
    std::int64_t const kind = columns.integer(2, "kind of analysis");
    block.stepNumber = columns.shortInteger(5, "step number");
    block.analysis = columns.text(10);
    BlockFormat const format(stream_, columns.integer(2, "format"));
    columns.end();
    if (kind < 0 || kind > 4)
        stream_.fail("The kind of analysis " + std::to_string(kind) + " is not one of 0 to 4.");
    if (count < 0)
        stream_.fail("The number of nodes is negative.");
    block.kind = static_cast<AnalysisKind>(kind);
    return {static_cast<std::uint64_t>(count), format};
}

void ResultBlockReader::giveParameters(ResultBlock& block)
{
    block.step = pending_.step;
    block.mode = pending_.mode;
    block.parameters.swap(pending_.parameters);
    pending_ = ResultBlock{};
    hasPending_ = false;
}

std::size_t ResultBlockReader::parseName(ResultBlock& block)
{
    std::string line;
    stream_.requireLine(line, within);
    if (!isRecord(line, " -4"))
        stream_.fail("The name of the result (-4) is missing.");
    Columns columns(stream_, line);
    columns.skip(5);
    block.name = columns.text(8);
    std::int64_t const count = columns.integer(5, "number of components");
    std::int64_t const kind = columns.integer(5, "kind of result");
    columns.end();
    if (block.name.empty())
        stream_.fail("The result has no name.");
    if (count < 1)
        stream_.fail("The number of components is not positive.");
    if (kind != 1)
        stream_.fail("The result \"" + block.name + "\" is of kind " + std::to_string(kind) +
                     ", not of kind 1, values at nodes.");
    return static_cast<std::size_t>(count);
}

void ResultBlockReader::readComponents(ResultBlock& block)
{
    std::size_t const count = parseName(block);
    std::string line;
    for (std::size_t i = 0; i < count; ++i) {
        stream_.requireLine(line, within);
        if (!isRecord(line, " -5"))
            stream_.fail("The result \"" + block.name + "\" announces " + std::to_string(count) +
                         " components (-5) and has " + std::to_string(i) + ".");
        block.components.push_back(parseComponent(withoutTabs(line)));
    }
    componentCount_ = block.storedComponents().size();
    if (componentCount_ == 0)
        stream_.fail("The result \"" + block.name + "\" has no component with values.");
}

Component ResultBlockReader::parseComponent(std::string const& line)
{
    Columns columns(stream_, line);
    columns.skip(5);
    Component component{};
    component.name = columns.text(8);
    columns.integer(5, "menu number");
    component.entity = columns.integer(5, "kind of component");
    component.row = columns.integerOrZero(5, "row of the component");
    component.column = columns.integerOrZero(5, "column of the component");
    std::int64_t const existence = columns.integerOrZero(5, "existence flag");
    columns.skip(8);
    columns.end();
    if (existence < 0 || existence > 2)
        stream_.fail("The existence flag " + std::to_string(existence) + " is not one of 0 to 2.");
    component.isStored = existence == 0;
    return component;
}

void ResultBlockReader::readLines(BlockHead const& head, ResultBlock& block)
{
    std::string line;
    for (stream_.requireLine(line, within); takesNode(line); stream_.requireLine(line, within)) {
        readLineOfNode(head, line, block);
    }
    std::size_t const found = block.nodes.size() + strangers_.size();
    if (!isBareRecord(line, " -3"))
        stream_.fail("Neither a node (-1) nor the end of the result block (-3) stands here.");
    if (found > head.count)
        warnOfMore(stream_, found, head.count, "nodes");
    if (found == 0 && head.count > 0)
        warnOfNothing(head, block);
    else
        checkCount(stream_, found, head.count, "nodes");
}

void ResultBlockReader::readLineOfNode(BlockHead const& head, std::string const& line,
                                       ResultBlock& block)
{
    Columns columns(stream_, line);
    columns.skip(3);
    bool const isTaken = takeNode(columns.integer(head.format.numberWidth(), "node number"), block);
    std::string continuation;
    for (std::size_t i = 0; i < componentCount_; ++i) {
        if (i > 0 && i % valuesPerLine == 0) {
            columns.end();
            stream_.requireLine(continuation, within);
            if (!isRecord(continuation, " -2"))
                stream_.fail("The node's further values (-2) are missing.");
            columns = Columns(stream_, continuation);
            columns.skip(3 + head.format.numberWidth());
        }
        double const value = columns.real(Columns::realWidth, "value");
        if (isTaken)
            block.values.push_back(value);
    }
    columns.end();
}

void ResultBlockReader::readRecords(BlockHead const& head, ResultBlock& block)
{
    if (head.count > 0 && hasLine()) {
        warnOfNothing(head, block);
        return;
    }
    std::size_t const realSize = head.format.realSize();
    std::size_t const recordSize = sizeof(std::int32_t) + componentCount_ * realSize;
    stream_.requireRecords(head.count, recordSize, within);
    for (std::uint64_t i = 0; i < head.count; ++i) {
        BinaryRecord record(stream_.readRecord(recordSize, within));
        if (!takeNode(record.integer(), block))
            continue;
        for (std::size_t c = 0; c < componentCount_; ++c)
            block.values.push_back(record.real(realSize));
    }
}

/// False for a node that the mesh does not have.
bool ResultBlockReader::takeNode(std::int64_t nodeId, ResultBlock& block)
{
    auto const index = mesh_.indexOf(nodeId);
    if (!index) {
        strangers_.push_back(nodeId);
        return false;
    }
    if (lastBlock_[*index] == blockNumber_)
        stream_.fail("The result \"" + block.name + "\" holds node " + std::to_string(nodeId) +
                     " twice.");
    lastBlock_[*index] = blockNumber_;
    block.nodes.push_back(*index);
    return true;
}

/// Solvers of fluids announce results of solids, which they don't have.
void ResultBlockReader::warnOfNothing(BlockHead const& head, ResultBlock const& block)
{
    stream_.warn("The result \"" + block.name + "\" announces values at " +
                 std::to_string(head.count) + " nodes and has none.");
}

/// Whether the next record begins where those of a block should stand.
bool ResultBlockReader::hasLine()
{
    std::string const bytes = stream_.peek(sizeof("    1P") - 1);
    return isRecord(bytes, "    1P") || isRecord(bytes, "    1U") || isRecord(bytes, "  100C") ||
           isRecord(bytes, " 9999");
}

/// Values have no place in a model without their node. A block none of whose nodes are known is
/// another file's, or nonsense.
void ResultBlockReader::warnOfStrangers(ResultBlock const& block)
{
    if (strangers_.empty())
        return;
    std::string const result = "The result \"" + block.name + "\"";
    std::string const node = std::to_string(strangers_.front());
    if (block.nodes.empty())
        stream_.fail(result + " refers to node " + node + ", which does not exist.");
    std::string const others =
        strangers_.size() == 1 ? "" : " and " + std::to_string(strangers_.size() - 1) + " others";
    stream_.warn(result + " has values at node " + node + others +
                 ", which the mesh does not have; they were left out.");
}

} // namespace Frd
