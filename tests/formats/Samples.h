#ifndef TESTS_FORMATS_SAMPLES_H
#define TESTS_FORMATS_SAMPLES_H

#include <string>
#include <vector>

/// The beginning of a file of some format. Tests store it under a name without an ending, so that
/// only the content tells the format.
struct Sample
{
    std::string format;
    std::string content;
    /// Debian's package with the library that the format needs; empty if it needs none.
    std::string package;
};

inline std::vector<Sample> samples()
{
    std::string const hdf5 = "\x89HDF\r\n\x1a\n";
    return {
        {"frd", "    1C\n", ""},
        {"VTK XML", "<?xml version=\"1.0\"?>\n<VTKFile type=\"UnstructuredGrid\">", "libvtk9-dev"},
        {"VTK series", "<VTKFile type=\"Collection\" version=\"0.1\">", "libvtk9-dev"},
        {"VTK legacy", "# vtk DataFile Version 5.1\n", "libvtk9-dev"},
        {"EnSight", "# a case\r\nFORMAT\r\ntype:  ensight gold\r\n", ""},
        {"CGNS", hdf5 + std::string(9000, '\0') + "CGNSLibraryVersion", "libvtk9-dev"},
        {"CGNS", "@(#)ADF Database Version A02011>", "libvtk9-dev"},
        {"Exodus", std::string("CDF\x02\0\0", 6) + "floating_point_word_size", "libexodusii-dev"},
        {"Exodus", hdf5 + std::string(9000, '\0') + "floating_point_word_size", "libexodusii-dev"},
        {"Gmsh", "$Comments\nby hand\n$EndComments\n$MeshFormat\n4.1 0 8\n", "libgmsh-dev"},
    };
}

#endif
