#include "CgnsSection.h"

#include <exchange/Error.h>

#include <vtk_cgns.h>
// clang-format off
#include VTK_CGNS(cgnslib.h)
// clang-format on

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>

namespace VtkRead {

namespace {

using Exchange::Error;

/// Longer than any name.
using Text = std::array<char, 64>;

constexpr int dimensionOfVolumes = 3;

int dimensionOf(std::string const& type)
{
    if (type == "NODE")
        return 0;
    if (type.rfind("BAR_", 0) == 0)
        return 1;
    if (type.rfind("TRI_", 0) == 0 || type.rfind("QUAD_", 0) == 0 || type == "NGON_n")
        return 2;
    return dimensionOfVolumes;
}

std::string nameOfType(cgsize_t type)
{
    char const* const name = cg_ElementTypeName(static_cast<CGNS_ENUMT(ElementType_t)>(type));
    return name == nullptr ? std::string() : std::string(name);
}

} // namespace

void checkCgns(int status)
{
    if (status != CG_OK)
        throw Error(cg_get_error());
}

CgnsSection::CgnsSection(int file, int base, int zone, int section)
    : file_(file), base_(base), zone_(zone), number_(section)
{
    Text name = {};
    CGNS_ENUMT(ElementType_t) type = CGNS_ENUMV(ElementTypeNull);
    cgsize_t first = 0;
    cgsize_t last = 0;
    int boundaryElements = 0;
    int hasParents = 0;
    checkCgns(cg_section_read(file_, base_, zone_, number_, name.data(), &type, &first, &last,
                              &boundaryElements, &hasParents));
    name_ = name.data();
    type_ = nameOfType(type);
    first_ = first;
    last_ = last;
}

bool CgnsSection::isPolygons() const
{
    return type_ == "NGON_n";
}

bool CgnsSection::isPolyhedra() const
{
    return type_ == "NFACE_n";
}

int CgnsSection::dimension() const
{
    return type_ == "MIXED" ? dimensionOfMixed() : dimensionOf(type_);
}

int CgnsSection::dimensionOfMixed() const
{
    // In a section of mixed elements, each has the number of its type in front of its nodes.
    auto const [values, offsets] = connectivity();
    int highest = 0;
    for (std::size_t i = 0; i + 1 < offsets.size() && highest < dimensionOfVolumes; ++i) {
        auto const place = static_cast<std::size_t>(offsets[i]);
        if (place >= values.size())
            throw Error("An element begins behind the end of its section.");
        highest = std::max(highest, dimensionOf(nameOfType(values[place])));
    }
    return highest;
}

std::vector<std::int64_t> CgnsSection::faces() const
{
    std::vector<std::int64_t> faces = connectivity().values;
    // The sign tells on which side of the face the element is.
    for (std::int64_t& face : faces)
        face = std::abs(face);
    return faces;
}

CgnsSection::Connectivity CgnsSection::connectivity() const
{
    cgsize_t size = 0;
    checkCgns(cg_ElementDataSize(file_, base_, zone_, number_, &size));
    // Each element has a value at least, so that a wrong range takes no memory.
    if (last_ < first_ || last_ - first_ >= size)
        throw Error("A section has less elements than it says.");
    std::vector<cgsize_t> values(static_cast<std::size_t>(size));
    std::vector<cgsize_t> offsets(static_cast<std::size_t>(last_ - first_) + 2);
    checkCgns(cg_poly_elements_read(file_, base_, zone_, number_, values.data(), offsets.data(),
                                    nullptr));
    return {{values.begin(), values.end()}, {offsets.begin(), offsets.end()}};
}

} // namespace VtkRead
