#ifndef READ_GMSH_FILEENDS_H
#define READ_GMSH_FILEENDS_H

#include <filesystem>

namespace Gmsh {

/// Whether the file is a mesh of Gmsh, version 2 or later, by what it begins with. Gmsh takes what
/// begins otherwise for a script, unless the ending of the name says what it is.
bool hasBeginning(std::filesystem::path const& path);

/// Whether the last line of the file ends a section. Gmsh itself takes what is there of a file that
/// was cut off, and says nothing.
bool hasEnding(std::filesystem::path const& path);

} // namespace Gmsh

#endif
