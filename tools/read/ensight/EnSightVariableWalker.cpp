#include "EnSightVariableWalker.h"

#include <exchange/Error.h>

#include <algorithm>

namespace VtkRead {

namespace {

using Words = EnSightFile::Words;

constexpr std::uint64_t realWidth = 12;
constexpr std::uint64_t countWidth = 10;
constexpr std::uint64_t oldRealsPerLine = 6;

} // namespace

EnSightVariableWalker::EnSightVariableWalker(EnSightFile& file, EnSightMesh const& mesh,
                                             EnSightCase::Variable const& variable)
    : file_(file), mesh_(mesh), variable_(variable)
{}

void EnSightVariableWalker::walk()
{
    try {
        readSections();
    } catch (EnSightFile::Unknown const&) {
        requireMeshOfLatest();
        throw;
    }
    bool const hasSharedNodes = !variable_.isPerElement && mesh_.sharedNodes > 0;
    if (parts_.empty() && !hasSharedNodes && partAtEarlyEnd())
        throw Exchange::Error("The values of the variable '" + variable_.name + "' are missing.");
}

void EnSightVariableWalker::readSections()
{
    file_.beginStep();
    readSharedNodes();
    while (auto const words = file_.nextSection())
        readSection(*words);
    endPart();
}

/// What nobody knows are values where the mesh has nothing that could have any.
void EnSightVariableWalker::requireMeshOfLatest() const
{
    if (isForeign_)
        throw Exchange::Error("The mesh has less in part " + std::to_string(part_.number) +
                              " than the file '" + file_.path().string() + "' has values of.");
}

void EnSightVariableWalker::readSharedNodes()
{
    if (!variable_.isPerElement)
        file_.skip({mesh_.sharedNodes * variable_.components, oldRealsPerLine, realWidth});
}

void EnSightVariableWalker::readSection(Words const& words)
{
    if (words.front() == "part")
        readPart(words);
    else
        readValues(words);
}

void EnSightVariableWalker::readPart(Words const& words)
{
    endPart();
    std::uint64_t const number = mesh_.isGold ? file_.count() : file_.numberOfPart(words);
    EnSightMesh::Part const* const part = mesh_.find(number);
    part_ = part != nullptr ? *part : EnSightMesh::Part{number, 0, {}};
    isInPart_ = true;
    isForeign_ = false;
    types_.clear();
}

/// VTK's reader makes up the values of elements that a part has none of.
void EnSightVariableWalker::endPart()
{
    if (!isInPart_)
        return;
    isInPart_ = false;
    parts_.insert(part_.number);
    if (types_.empty() && mayHaveValues(part_))
        file_.raiseEnd();
    if (!variable_.isPerElement)
        return;
    for (auto const& [type, count] : part_.elements)
        if (count > 0 && !EnSightMesh::isGhost(type) && types_.count(type) == 0)
            throw Exchange::Error("The file '" + file_.path().string() +
                                  "' has no values of the '" + type + "' elements of part " +
                                  std::to_string(part_.number) + ".");
}

void EnSightVariableWalker::readValues(Words const& words)
{
    if (!isInPart_)
        file_.raiseUnknown();
    std::string const& type = words.front();
    std::uint64_t const count = countOf(type);
    if (!types_.insert(type).second)
        throw EnSightFile::Unknown();
    allTypes_.insert(type);
    skipValues(countOfDefined(words, count), type == "block");
}

std::uint64_t EnSightVariableWalker::countOf(std::string const& type)
{
    bool const isOfBlock = type == "block";
    if (variable_.isPerElement ? !isOfBlock && !EnSightMesh::isElementType(type)
                               : !isOfBlock && type != "coordinates")
        file_.raiseUnknown();
    if (!variable_.isPerElement) {
        isForeign_ = part_.nodes == 0;
        return part_.nodes;
    }
    auto const elements = part_.elements.find(type);
    isForeign_ = elements == part_.elements.end();
    return isForeign_ ? 0 : elements->second;
}

std::uint64_t EnSightVariableWalker::countOfDefined(Words const& words, std::uint64_t count)
{
    if (words.size() == 1 || !mesh_.isGold)
        return count;
    hasUndefined_ = true;
    if (words[1] == "undef") {
        file_.skip({1, 1, realWidth});
        return count;
    }
    if (words[1] != "partial")
        file_.raiseUnknown();
    std::uint64_t const defined = file_.count();
    file_.skip({defined, 1, countWidth});
    return defined;
}

void EnSightVariableWalker::skipValues(std::uint64_t count, bool areOfBlock)
{
    if (!mesh_.isGold && !areOfBlock)
        return file_.skip({count * variable_.components, oldRealsPerLine, realWidth});
    for (std::uint64_t i = 0; i < variable_.components; ++i)
        file_.skip({count, mesh_.isGold ? 1 : oldRealsPerLine, realWidth});
}

std::optional<std::uint64_t> EnSightVariableWalker::partAtEarlyEnd() const
{
    auto const last = std::find_if(mesh_.parts.rbegin(), mesh_.parts.rend(),
                                   [this](auto const& part) { return mayHaveValues(part); });
    if (file_.isSeries() || last == mesh_.parts.rend() || parts_.count(last->number) > 0)
        return std::nullopt;
    return parts_.empty() ? 0 : part_.number;
}

bool EnSightVariableWalker::mayHaveValues(EnSightMesh::Part const& part) const
{
    if (variable_.isPerElement)
        return part.hasElements();
    return part.nodes > 0;
}

} // namespace VtkRead
