#ifndef READ_GMSH_ENDING_H
#define READ_GMSH_ENDING_H

#include <filesystem>

namespace Gmsh {

/// Whether the last line of the file ends a section. Gmsh itself takes what is there of a file that
/// was cut off, and says nothing.
bool hasEnding(std::filesystem::path const& path);

} // namespace Gmsh

#endif
