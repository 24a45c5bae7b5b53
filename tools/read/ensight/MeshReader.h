#ifndef READ_ENSIGHT_MESHREADER_H
#define READ_ENSIGHT_MESHREADER_H

#include "DataFile.h"
#include "Mesh.h"
#include "Topology.h"

#include <exchange/Report.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace EnSight {

/// Reads a mesh, one step of it.
class MeshReader
{
public:
    /// The file has read the first line of the step.
    /// \param bytesOfVariables how large the case is beside its mesh
    MeshReader(DataFile& file, std::uint64_t bytesOfVariables, Exchange::Report& report);

    /// \param hasElements whether the step has to have elements
    Mesh read(bool hasElements);

    /// A mesh of measured points.
    Mesh readMeasured();

private:
    using Counts = std::array<std::uint64_t, 3>;
    using Integers = std::vector<std::int32_t>;
    using Reals = std::vector<float>;

    enum class Ids
    {
        None,
        Given,
        Ignored
    };

    Ids readIds();
    void readSection(Words const& words);
    void startPart(Words const& words);
    void finishPart();
    MeshPart& part();

    void readNodes();
    void readSharedNodes();
    void readElements(std::string const& keyword, Topology const& topology);
    Integers readSizes(std::size_t count);
    void addElements(Topology const& topology, Integers const& ids, Integers const& sizes,
                     Integers const& nodes);
    std::uint32_t rowOf(std::int32_t node) const;

    void readBlock(Words const& words);
    void readBlockCoordinates(Words const& words);
    void countLatticeNodes(std::uint64_t count);
    void readOfBlock(std::string const& keyword);
    void addCells();
    bool isShown(std::size_t cell, std::vector<std::uint32_t> const& nodes);
    std::uint64_t product(Counts const& factors) const;

    void takeSharedNodes(MeshPart& part) const;
    void addUnusedNodes();

    DataFile& file_;
    Exchange::Report& report_;
    Mesh mesh_;
    Ids nodeIds_ = Ids::None;
    Ids elementIds_ = Ids::None;
    std::vector<std::int64_t> sharedIds_;
    /// Ids of nodes, ascending, and where these are; empty where these are rows.
    std::vector<std::pair<std::int32_t, std::uint32_t>> rowsOfIds_;
    /// How many nodes there may be, and are, that the file has no bytes for.
    std::uint64_t mostLatticeNodes_;
    std::uint64_t latticeNodes_ = 0;

    // What is known of the part that was read last.
    bool hasNodes_ = false;
    /// Whether it has elements, or no nodes either. A mesh that ends with a part that nothing could
    /// be seen of has lost its end: who wants to see nodes alone writes points.
    bool isVisible_ = true;
    bool isStructured_ = false;
    Counts size_{};
    Integers blanks_;
    Integers ghostFlags_;
    std::vector<std::uint32_t> kept_;
    std::size_t ghosts_ = 0;
    std::size_t blanked_ = 0;
    std::size_t polyhedra_ = 0;
};

} // namespace EnSight

#endif
