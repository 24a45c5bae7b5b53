#include "CgnsBoundaries.h"

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

void check(int status)
{
    if (status != CG_OK)
        throw Exchange::Error(cg_get_error());
}

class File
{
public:
    explicit File(std::filesystem::path const& path)
    {
        check(cg_open(path.c_str(), CG_MODE_READ, &id_));
    }
    ~File() { cg_close(id_); }
    File(File const&) = delete;
    File& operator=(File const&) = delete;

    Boundaries boundaries() const
    {
        Boundaries boundaries;
        int bases = 0;
        check(cg_nbases(id_, &bases));
        for (int base = 1; base <= bases; ++base)
            addBase(boundaries, base);
        return boundaries;
    }

private:
    /// Longer than any name.
    using Text = std::array<char, 64>;

    void addBase(Boundaries& boundaries, int base) const
    {
        Text name = {};
        int dimension = 0;
        int spaceDimension = 0;
        int zones = 0;
        check(cg_base_read(id_, base, name.data(), &dimension, &spaceDimension));
        check(cg_nzones(id_, base, &zones));
        for (int zone = 1; zone <= zones; ++zone) {
            int conditions = 0;
            check(cg_nbocos(id_, base, zone, &conditions));
            boundaries.conditions += static_cast<std::size_t>(conditions);
            boundaries.sections += boundarySections(base, zone, dimension);
        }
    }

    std::size_t boundarySections(int base, int zone, int dimension) const
    {
        int sections = 0;
        std::size_t count = 0;
        check(cg_nsections(id_, base, zone, &sections));
        for (int section = 1; section <= sections; ++section)
            if (dimensionOf(base, zone, section, dimension) < dimension)
                ++count;
        return count;
    }

    /// That of the zone where a section mixes elements, or holds polygons and polyhedra.
    int dimensionOf(int base, int zone, int section, int dimensionOfZone) const
    {
        Text name = {};
        CGNS_ENUMT(ElementType_t) type = CGNS_ENUMV(ElementTypeNull);
        cgsize_t first = 0;
        cgsize_t last = 0;
        int boundaryElements = 0;
        int hasParents = 0;
        check(cg_section_read(id_, base, zone, section, name.data(), &type, &first, &last,
                              &boundaryElements, &hasParents));
        std::string const typeName = cg_ElementTypeName(type);
        if (typeName == "NODE")
            return 0;
        if (typeName.rfind("BAR_", 0) == 0)
            return 1;
        if (typeName.rfind("TRI_", 0) == 0 || typeName.rfind("QUAD_", 0) == 0)
            return 2;
        return dimensionOfZone;
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
