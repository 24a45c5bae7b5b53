// A result file, record by record:
//
//   "    1C" model name (6)                       first line; some solvers write it twice
//   "    1U" text                                 as many as there are; among them fields, such as
//   "    1UPGM               name of the solver"  name (18), text
//   "    1UMAT    1STEEL"                         number of a material (5), its name
//   "    2C" ...                                  node block, see MeshBlockReader.cpp
//   "    3C" ...                                  element block, likewise
//   "    1P" ...                                  parameters of the next block, and
//   "  100C" ...                                  result blocks, see ResultBlockReader.cpp
//   " 9999"                                       last line

#include "Reader.h"

#include "Columns.h"
#include "MeshBlockReader.h"
#include "Number.h"

#include <algorithm>
#include <array>

namespace Frd {

namespace {

constexpr std::size_t keyWidth = 6;
constexpr std::size_t fieldNameWidth = 18;

/// Whether the line is an end record that is cut off, and cannot be another record.
bool beginsEnd(std::string_view line)
{
    return line.size() >= 2 && std::string_view(" 9999").substr(0, line.size()) == line;
}

bool isFieldName(std::string_view name)
{
    static std::array<std::string_view, 9> const names = {
        "USER", "DATE", "TIME", "HOST", "PGM", "VERSION", "COMPILETIME", "DIR", "DBN"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

Reader::Reader(std::filesystem::path const& path) : stream_(path), results_(stream_, mesh_)
{
    readFirstLine();
    readToResult();
}

void Reader::readFirstLine()
{
    if (stream_.remaining() == 0)
        throw Error("The file is empty.");
    if (!stream_.startsWith("    1C"))
        throw Error("This is not a result file: it does not begin with a 1C record.");
    stream_.requireLine(line_, "its first line");
    header_.modelName = trimmed(std::string_view(line_).substr(keyWidth));
}

void Reader::readToResult()
{
    try {
        readRecordsToResult();
    } catch (Truncated const& truncation) {
        if (!isMeshWhole_)
            throw;
        truncation_ = truncation;
        endedBehindBlock_ = !results_.hasParameters() && (line_.empty() || beginsEnd(line_));
    }
}

void Reader::readRecordsToResult()
{
    do {
        if (!stream_.readLine(line_))
            stream_.failAtEnd("The file ends without its end record (9999).");
        readRecord();
    } while (!isRecord(line_, "  100C") && !isAtEnd_);
}

void Reader::readRecord()
{
    if (isRecord(line_, "    1U"))
        readUserRecord();
    else if (isRecord(line_, "    1P"))
        results_.takeParameter(line_);
    else if (isRecord(line_, "    2C"))
        readNodes();
    else if (isRecord(line_, "    3C"))
        readElements();
    else if (isRecord(line_, "    1C") && !hasNodes_)
        readModelAgain();
    else if (isBareRecord(line_, " 9999"))
        readEnd();
    else if (!isRecord(line_, "  100C"))
        stream_.fail("The record \"" + line_.substr(0, keyWidth) + "\" is unknown.");
    else if (!hasNodes_)
        stream_.fail("A result block stands before the nodes.");
    else
        isMeshWhole_ = true;
}

/// Solvers of fluids write the first record twice.
void Reader::readModelAgain()
{
    std::string const name(trimmed(std::string_view(line_).substr(keyWidth)));
    if (header_.modelName.empty())
        header_.modelName = name;
    bool const isLost = !name.empty() && name != header_.modelName;
    stream_.warn(stream_.withPlace("The 1C record stands here once more") +
                 (isLost ? "; its name \"" + name + "\" was left out." : "."));
}

void Reader::readUserRecord()
{
    std::string_view const text = std::string_view(line_).substr(keyWidth);
    if (readMaterial(text) || readField(text))
        return;
    std::string const title(trimmed(text));
    if (!title.empty())
        header_.titles.push_back(title);
}

bool Reader::readMaterial(std::string_view text)
{
    if (!isRecord(text, "MAT") || text.size() < 8)
        return false;
    auto const number = parseInteger(text.substr(3, 5));
    if (!number)
        return false;
    header_.materials[*number] = trimmed(text.substr(8));
    return true;
}

bool Reader::readField(std::string_view text)
{
    std::string const name(trimmed(text.substr(0, fieldNameWidth)));
    if (!isFieldName(name))
        return false;
    if (text.size() > fieldNameWidth && !trimmed(text.substr(fieldNameWidth)).empty())
        header_.fields[name] = trimmed(text.substr(fieldNameWidth));
    return true;
}

void Reader::readNodes()
{
    if (hasNodes_)
        stream_.fail("There is a second node block.");
    MeshBlockReader(stream_, mesh_).readNodes(line_);
    hasNodes_ = true;
}

void Reader::readElements()
{
    if (!hasNodes_)
        stream_.fail("The element block stands before the nodes.");
    if (hasElements_)
        stream_.fail("There is a second element block.");
    MeshBlockReader(stream_, mesh_).readElements(line_);
    hasElements_ = true;
    isMeshWhole_ = true;
}

void Reader::readEnd()
{
    results_.end();
    isAtEnd_ = true;
    std::string extra;
    while (stream_.readLine(extra))
        if (!trimmed(extra).empty())
            stream_.fail("Something stands behind the end record (9999).");
}

bool Reader::next(ResultBlock& block)
{
    block = ResultBlock{};
    if (truncation_)
        throw Truncated(*truncation_);
    if (isAtEnd_)
        return false;
    results_.read(line_, block);
    readToResult();
    return true;
}

} // namespace Frd
