#include "CgnsFile.h"

#include <array>
#include <stdexcept>

namespace {

void check(int status)
{
    if (status != CG_OK)
        throw std::runtime_error(cg_get_error());
}

constexpr std::size_t axisCount = 3;

} // namespace

CgnsFile::CgnsFile(std::filesystem::path const& path, int type, cgsize_t cells)
{
    check(cg_set_file_type(type));
    check(cg_open(path.c_str(), CG_MODE_WRITE, &file_));
    check(cg_base_write(file_, "Base", 3, 3, &base_));
    auto const nodes = static_cast<cgsize_t>(coordinates().size() / axisCount);
    std::array<cgsize_t, 3> const sizes = {nodes, cells, 0};
    check(cg_zone_write(file_, base_, "Zone one", sizes.data(), CGNS_ENUMV(Unstructured), &zone_));
    std::array<char const*, axisCount> const axes = {"CoordinateX", "CoordinateY", "CoordinateZ"};
    for (std::size_t axis = 0; axis < axisCount; ++axis) {
        std::vector<double> values;
        for (std::size_t i = axis; i < coordinates().size(); i += axisCount)
            values.push_back(coordinates()[i]);
        int number = 0;
        check(cg_coord_write(file_, base_, zone_, CGNS_ENUMV(RealDouble), axes[axis], values.data(),
                             &number));
    }
}

CgnsFile::~CgnsFile()
{
    cg_close(file_);
}

std::vector<double> const& CgnsFile::coordinates()
{
    static std::vector<double> const unitCube = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0,
                                                 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1};
    return unitCube;
}

void CgnsFile::addSection(std::string const& name, CGNS_ENUMT(ElementType_t) type, cgsize_t first,
                          cgsize_t count, Numbers const& nodes) const
{
    int number = 0;
    check(cg_section_write(file_, base_, zone_, name.c_str(), type, first, first + count - 1, 0,
                           nodes.data(), &number));
}

void CgnsFile::addSection(std::string const& name, CGNS_ENUMT(ElementType_t) type, cgsize_t first,
                          std::vector<Numbers> const& elements) const
{
    Numbers values;
    Numbers offsets = {0};
    for (Numbers const& element : elements) {
        values.insert(values.end(), element.begin(), element.end());
        offsets.push_back(static_cast<cgsize_t>(values.size()));
    }
    cgsize_t const last = first + static_cast<cgsize_t>(elements.size()) - 1;
    int number = 0;
    check(cg_poly_section_write(file_, base_, zone_, name.c_str(), type, first, last, 0,
                                values.data(), offsets.data(), &number));
}

void CgnsFile::addCube(cgsize_t number) const
{
    addSection("Cube " + std::to_string(number), CGNS_ENUMV(HEXA_8), number, 1,
               {1, 2, 3, 4, 5, 6, 7, 8});
}

void CgnsFile::addTemperature(std::vector<double> const& values) const
{
    int solution = 0;
    int number = 0;
    check(cg_sol_write(file_, base_, zone_, "Solution", CGNS_ENUMV(Vertex), &solution));
    check(cg_field_write(file_, base_, zone_, solution, CGNS_ENUMV(RealDouble), "Temperature",
                         values.data(), &number));
}

void CgnsFile::addCondition(std::string const& name, CGNS_ENUMT(GridLocation_t) location,
                            Numbers const& places, std::string const& family) const
{
    auto const type = family.empty() ? CGNS_ENUMV(BCInflow) : CGNS_ENUMV(FamilySpecified);
    int number = 0;
    check(cg_boco_write(file_, base_, zone_, name.c_str(), type, CGNS_ENUMV(PointList),
                        static_cast<cgsize_t>(places.size()), places.data(), &number));
    if (!family.empty()) {
        int familyNumber = 0;
        check(cg_family_write(file_, base_, family.c_str(), &familyNumber));
        check(cg_goto(file_, base_, "Zone_t", zone_, "ZoneBC_t", 1, "BC_t", number, "end"));
        check(cg_famname_write(family.c_str()));
    }
    if (location != CGNS_ENUMV(Vertex))
        check(cg_boco_gridlocation_write(file_, base_, zone_, number, location));
}
