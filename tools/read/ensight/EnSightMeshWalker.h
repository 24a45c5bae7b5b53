#ifndef READ_ENSIGHT_ENSIGHTMESHWALKER_H
#define READ_ENSIGHT_ENSIGHTMESHWALKER_H

#include "EnSightFile.h"
#include "EnSightMesh.h"

#include <array>
#include <cstdint>
#include <string>

namespace VtkRead {

/// Walks through a mesh of EnSight, one step of it.
class EnSightMeshWalker
{
public:
    EnSightMeshWalker(EnSightFile& file, bool isGold);

    /// Raises `Exchange::Error` when the file ends too early.
    EnSightMesh walk();

    /// The nodes of a mesh of measured points.
    EnSightMesh walkMeasured();

private:
    void beginStep();
    bool readsIds();
    void readSection(EnSightFile::Words const& words);
    void readPart(EnSightFile::Words const& words);
    void readNodes();
    void readElements(std::string const& type);
    void readPolygons(std::uint64_t count);
    void readPolyhedra(std::uint64_t count);
    void readBlock(EnSightFile::Words const& words);
    void requireKnown(EnSightFile::Words const& kindsOfBlock) const;

    EnSightMesh::Part& part();
    void skipIds(std::uint64_t count);
    void skipRows(std::uint64_t count, std::uint64_t perRow, bool haveIds, std::uint64_t width);
    void skipReals(std::uint64_t count);
    void skipLinesOfNodes(std::uint64_t lines, EnSightFile::Tally const& nodes);
    void requireElements() const;

    EnSightFile& file_;
    EnSightMesh mesh_;
    /// Whether the latest part has elements, or no nodes either. A mesh that ends with a part that
    /// nothing could be seen of has lost its end: who wants to see nodes alone writes points.
    bool isVisible_ = false;
};

} // namespace VtkRead

#endif
