#include "CgnsZone.h"

#include <vtk_cgns.h>
// clang-format off
#include VTK_CGNS(cgnslib.h)
// clang-format on

#include <algorithm>
#include <array>

namespace VtkRead {

CgnsZone::CgnsZone(int file, int base, int zone, int dimension)
    : file_(file), base_(base), zone_(zone), dimension_(dimension), numbers_(readNumbers())
{
    readSections();
}

std::size_t CgnsZone::boundaryConditions() const
{
    int conditions = 0;
    checkCgns(cg_nbocos(file_, base_, zone_, &conditions));
    return static_cast<std::size_t>(conditions);
}

std::size_t CgnsZone::boundarySections() const
{
    auto const isLeftOut = [this](CgnsSection const& section) {
        return !isRead(section) && section.dimension() < dimension_;
    };
    return static_cast<std::size_t>(std::count_if(sections_.begin(), sections_.end(), isLeftOut));
}

std::string CgnsZone::misreading() const
{
    if (!numbers_.isUnstructured || consistsOfFaces())
        return {};
    for (CgnsSection const& section : sections_)
        if (!isRead(section) && section.dimension() >= dimension_)
            return "VTK would leave out the cells of the section '" + section.name() +
                   "', which are not numbered in front of all other elements.";
    return mixesSectionsUp() ? "VTK would mix up the sections of cells, because one of other "
                               "elements stands in front of them."
                             : "";
}

CgnsZone::Numbers CgnsZone::readNumbers() const
{
    CGNS_ENUMT(ZoneType_t) type = CGNS_ENUMV(ZoneTypeNull);
    std::array<char, 64> name = {};
    // A structured zone of three dimensions has nine sizes. One without structure has three: nodes,
    // cells, and nodes on boundaries.
    std::array<cgsize_t, 9> sizes = {};
    checkCgns(cg_zone_type(file_, base_, zone_, &type));
    checkCgns(cg_zone_read(file_, base_, zone_, name.data(), sizes.data()));
    return {type == CGNS_ENUMV(Unstructured), sizes[1]};
}

void CgnsZone::readSections()
{
    int count = 0;
    checkCgns(cg_nsections(file_, base_, zone_, &count));
    for (int section = 1; section <= count; ++section)
        sections_.emplace_back(file_, base_, zone_, section);
}

bool CgnsZone::hasPolyhedra() const
{
    return std::any_of(sections_.begin(), sections_.end(),
                       [](CgnsSection const& section) { return section.isPolyhedra(); });
}

bool CgnsZone::consistsOfFaces() const
{
    return std::any_of(sections_.begin(), sections_.end(), [](CgnsSection const& section) {
        return section.isPolygons() || section.isPolyhedra();
    });
}

/// VTK takes the place of a section among those that it reads for that among all of them.
bool CgnsZone::mixesSectionsUp() const
{
    auto const isOneOfCells = [this](CgnsSection const& section) { return isRead(section); };
    auto const firstOther = std::find_if_not(sections_.begin(), sections_.end(), isOneOfCells);
    return std::count_if(sections_.begin(), sections_.end(), isOneOfCells) > 1 &&
           std::any_of(firstOther, sections_.end(), isOneOfCells);
}

/// Whatever its elements are, VTK takes a section for cells that begins with a number that a cell
/// may have. Polygons are faces where there are polyhedra, and cells where there are none.
bool CgnsZone::isRead(CgnsSection const& section) const
{
    if (!numbers_.isUnstructured)
        return false;
    if (section.isPolygons())
        return !hasPolyhedra() || isFaceOfPolyhedra(section);
    return section.isPolyhedra() || section.first() <= numbers_.cells;
}

bool CgnsZone::isFaceOfPolyhedra(CgnsSection const& section) const
{
    auto const isInSection = [&section](std::int64_t face) {
        return face >= section.first() && face <= section.last();
    };
    return std::any_of(sections_.begin(), sections_.end(), [&](CgnsSection const& polyhedra) {
        if (!polyhedra.isPolyhedra())
            return false;
        std::vector<std::int64_t> const faces = polyhedra.faces();
        return std::any_of(faces.begin(), faces.end(), isInSection);
    });
}

} // namespace VtkRead
