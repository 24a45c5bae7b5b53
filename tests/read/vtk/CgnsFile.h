#ifndef TESTS_READ_VTK_CGNSFILE_H
#define TESTS_READ_VTK_CGNSFILE_H

#include <cgnslib.h>

#include <filesystem>
#include <string>
#include <vector>

/// A CGNS file with a base of volumes and the nodes of a cube, made by CGNS' own library.
class CgnsFile
{
public:
    using Numbers = std::vector<cgsize_t>;

    /// \param type CG_FILE_HDF5 or CG_FILE_ADF
    /// \param cells how many the zone tells that it has
    explicit CgnsFile(std::filesystem::path const& path, int type = CG_FILE_HDF5,
                      cgsize_t cells = 1);
    /// Closes the file, which is not whole before.
    ~CgnsFile();
    CgnsFile(CgnsFile const&) = delete;
    CgnsFile& operator=(CgnsFile const&) = delete;

    static std::vector<double> const& coordinates();

    /// Adds elements of a type whose elements all have the same number of nodes.
    /// \param first number of the first element
    void addSection(std::string const& name, CGNS_ENUMT(ElementType_t) type, cgsize_t first,
                    cgsize_t count, Numbers const& nodes) const;

    /// Adds elements of MIXED, NGON_n or NFACE_n: a list of numbers for each element.
    void addSection(std::string const& name, CGNS_ENUMT(ElementType_t) type, cgsize_t first,
                    std::vector<Numbers> const& elements) const;

    /// Adds an element that is a cube with all nodes of the file.
    void addCube(cgsize_t number = 1) const;

    void addTemperature(std::vector<double> const& values) const;

    /// Adds a boundary condition on nodes or on faces.
    /// \param family empty when the condition belongs to none
    void addCondition(std::string const& name, CGNS_ENUMT(GridLocation_t) location,
                      Numbers const& places, std::string const& family = "") const;

private:
    int file_ = 0;
    int base_ = 0;
    int zone_ = 0;
};

#endif
