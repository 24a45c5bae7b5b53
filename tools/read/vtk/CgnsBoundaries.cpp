#include "CgnsBoundaries.h"

#include "CgnsZone.h"

#include <exchange/Error.h>

#include <vtk_cgns.h>
// clang-format off
#include VTK_CGNS(cgnslib.h)
// clang-format on

#include <array>
#include <cstddef>
#include <exception>
#include <optional>
#include <string>

namespace VtkRead {

namespace {

struct Boundaries
{
    std::size_t sections = 0;
    std::size_t conditions = 0;
    /// What would be misread in the first zone whose cells are; empty where all are read right.
    std::string misreading;
};

class File
{
public:
    explicit File(std::filesystem::path const& path)
    {
        checkCgns(cg_open(path.c_str(), CG_MODE_READ, &id_));
    }
    ~File() { cg_close(id_); }
    File(File const&) = delete;
    File& operator=(File const&) = delete;

    Boundaries boundaries() const
    {
        Boundaries boundaries;
        int bases = 0;
        checkCgns(cg_nbases(id_, &bases));
        for (int base = 1; base <= bases; ++base)
            addBase(boundaries, base);
        return boundaries;
    }

private:
    void addBase(Boundaries& boundaries, int base) const
    {
        // CGNS limits names to 32 characters.
        std::array<char, 64> name = {};
        int dimension = 0;
        int spaceDimension = 0;
        int zones = 0;
        checkCgns(cg_base_read(id_, base, name.data(), &dimension, &spaceDimension));
        checkCgns(cg_nzones(id_, base, &zones));
        for (int number = 1; number <= zones; ++number) {
            CgnsZone const zone(id_, base, number, dimension);
            boundaries.conditions += zone.boundaryConditions();
            boundaries.sections += zone.boundarySections();
            if (boundaries.misreading.empty())
                boundaries.misreading = zone.misreading();
        }
    }

    int id_ = 0;
};

void warn(std::size_t count, std::string const& one, std::string const& many,
          Exchange::Report& report)
{
    if (count != 0)
        report.warn(std::to_string(count) + " " + (count == 1 ? one + " was" : many + " were") +
                    " left out.");
}

/// Nothing when the file is damaged.
std::optional<Boundaries> boundariesIn(std::filesystem::path const& path)
{
    try {
        return File(path).boundaries();
    } catch (std::exception const&) {
        // Sizes that no memory has room for are among what damage leads to.
        return std::nullopt;
    }
}

} // namespace

void reportBoundaries(std::filesystem::path const& path, Exchange::Report& report)
{
    std::optional<Boundaries> const boundaries = boundariesIn(path);
    if (!boundaries) {
        // A file of which the CGNS library can't list boundaries may still be one that VTK reads.
        report.warn("Boundaries, if there are any, were left out.");
        return;
    }
    if (!boundaries->misreading.empty())
        throw Exchange::Error(boundaries->misreading);
    warn(boundaries->sections, "section of elements on boundaries",
         "sections of elements on boundaries", report);
    warn(boundaries->conditions, "boundary condition", "boundary conditions", report);
}

} // namespace VtkRead
