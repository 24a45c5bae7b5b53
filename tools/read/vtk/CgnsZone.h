#ifndef READ_VTK_CGNSZONE_H
#define READ_VTK_CGNSZONE_H

#include "CgnsSection.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace VtkRead {

/// A zone in a CGNS file that is open: what of its elements VTK's reader takes.
class CgnsZone
{
public:
    /// File, base and zone as CGNS counts them. \param dimension that of the base's cells
    CgnsZone(int file, int base, int zone, int dimension);

    std::size_t boundaryConditions() const;

    /// How many sections are left out whose elements have a lower dimension than cells.
    std::size_t boundarySections() const;

    /// What VTK's reader makes wrong of the cells, in one sentence; empty where it reads them all.
    std::string misreading() const;

private:
    struct Numbers
    {
        bool isUnstructured = false;
        std::int64_t cells = 0;
    };

    Numbers readNumbers() const;
    void readSections();
    bool hasPolyhedra() const;
    bool consistsOfFaces() const;
    bool mixesSectionsUp() const;
    bool isRead(CgnsSection const& section) const;
    bool isFaceOfPolyhedra(CgnsSection const& section) const;

    int file_;
    int base_;
    int zone_;
    int dimension_;
    Numbers numbers_;
    std::vector<CgnsSection> sections_;
};

} // namespace VtkRead

#endif
