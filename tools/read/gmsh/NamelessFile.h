#ifndef READ_GMSH_NAMELESSFILE_H
#define READ_GMSH_NAMELESSFILE_H

#include <filesystem>
#include <string>

namespace Gmsh {

/// A file that is open under a name which tells nothing of it.
///
/// Gmsh chooses by the ending of a name how to read a file, and runs what a file of options beside
/// it says, commands of the system among it. Without a name of its own, a mesh is nothing but a
/// mesh.
class NamelessFile
{
public:
    explicit NamelessFile(std::filesystem::path const& path);
    ~NamelessFile();

    NamelessFile(NamelessFile const&) = delete;
    NamelessFile& operator=(NamelessFile const&) = delete;

    std::string path() const;

private:
    int descriptor_;
};

} // namespace Gmsh

#endif
