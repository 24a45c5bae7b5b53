#ifndef READ_ENSIGHT_ENSIGHTVARIABLEWALKER_H
#define READ_ENSIGHT_ENSIGHTVARIABLEWALKER_H

#include "EnSightCase.h"
#include "EnSightFile.h"
#include "EnSightMesh.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>

namespace VtkRead {

/// Walks through one step of a variable of EnSight, which has values of some parts of a mesh.
class EnSightVariableWalker
{
public:
    EnSightVariableWalker(EnSightFile& file, EnSightMesh const& mesh,
                          EnSightCase::Variable const& variable);

    /// Raises `Exchange::Error` when values are missing.
    void walk();

    /// The types of elements that there are values of; "coordinates" of nodes, "block" of
    /// structured parts.
    std::set<std::string> const& types() const { return allTypes_; }

    /// Whether there are parts of which not all values are defined.
    bool hasUndefined() const { return hasUndefined_; }

    /// The part that the file ends with, when the mesh has more that could have values; 0 where it
    /// is no part.
    std::optional<std::uint64_t> partAtEarlyEnd() const;

private:
    void readSections();
    void requireMeshOfLatest() const;
    void readSharedNodes();
    void readSection(EnSightFile::Words const& words);
    void readPart(EnSightFile::Words const& words);
    void endPart();
    void readValues(EnSightFile::Words const& words);
    std::uint64_t countOf(std::string const& type);
    std::uint64_t countOfDefined(EnSightFile::Words const& words, std::uint64_t count);
    void skipValues(std::uint64_t count, bool areOfBlock);
    bool mayHaveValues(EnSightMesh::Part const& part) const;

    EnSightFile& file_;
    EnSightMesh const& mesh_;
    EnSightCase::Variable const& variable_;
    EnSightMesh::Part part_;
    bool isInPart_ = false;
    /// Whether the latest section is one of which the mesh has nothing.
    bool isForeign_ = false;
    /// Of the latest part.
    std::set<std::string> types_;
    std::set<std::string> allTypes_;
    bool hasUndefined_ = false;
    std::set<std::uint64_t> parts_;
};

} // namespace VtkRead

#endif
