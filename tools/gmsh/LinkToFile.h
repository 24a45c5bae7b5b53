#ifndef GMSH_LINKTOFILE_H
#define GMSH_LINKTOFILE_H

#include <filesystem>

namespace Gmsh {

/// A name of its own for a file, in a folder of its own, as long as the object lives.
///
/// Gmsh chooses by the ending how to read a file, and runs what a file of options beside it says,
/// commands of the system among it. Under this name, a mesh is nothing but a mesh.
class LinkToFile
{
public:
    explicit LinkToFile(std::filesystem::path const& file);
    ~LinkToFile();

    LinkToFile(LinkToFile const&) = delete;
    LinkToFile& operator=(LinkToFile const&) = delete;

    std::filesystem::path path() const;

private:
    std::filesystem::path folder_;
};

} // namespace Gmsh

#endif
