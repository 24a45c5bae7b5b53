#include "CgnsBoundaries.h"

#include "CgnsZone.h"

#include <exchange/Error.h>

#include <vtk_cgns.h>
// clang-format off
#include VTK_CGNS(cgnslib.h)
// clang-format on

#include <array>
#include <cstddef>
#include <string>

namespace VtkRead {

namespace {

struct Boundaries
{
    std::size_t sections = 0;
    std::size_t conditions = 0;
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
        // Longer than any name.
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

} // namespace

void reportBoundaries(std::filesystem::path const& path, Exchange::Report& report)
{
    try {
        Boundaries const boundaries = File(path).boundaries();
        warn(boundaries.sections, "section of elements on boundaries",
             "sections of elements on boundaries", report);
        warn(boundaries.conditions, "boundary condition", "boundary conditions", report);
    } catch (Exchange::Error const&) {
        // What VTK could read is worth having all the same.
        report.warn("Boundaries, if there are any, were left out.");
    }
}

} // namespace VtkRead
