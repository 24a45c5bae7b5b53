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
    /// The file is whole then.
    ~CgnsFile();
    CgnsFile(CgnsFile const&) = delete;
    CgnsFile& operator=(CgnsFile const&) = delete;

    static std::vector<double> const& coordinates();

    /// Each element of the type has the same number of nodes. \param first number of the first
    void addSection(std::string const& name, CGNS_ENUMT(ElementType_t) type, cgsize_t first,
                    cgsize_t count, Numbers const& nodes) const;

    /// Elements of MIXED, NGON_n or NFACE_n, as a list for each.
    void addSection(std::string const& name, CGNS_ENUMT(ElementType_t) type, cgsize_t first,
                    std::vector<Numbers> const& elements) const;

    /// A cube over all nodes.
    void addCube(cgsize_t number = 1) const;

    void addTemperature(std::vector<double> const& values) const;

    /// On nodes, or on faces. \param family for none, empty
    void addCondition(std::string const& name, CGNS_ENUMT(GridLocation_t) location,
                      Numbers const& places, std::string const& family = "") const;

private:
    int file_ = 0;
    int base_ = 0;
    int zone_ = 0;
};

#endif
