#ifndef READ_GMSH_GMSH_H
#define READ_GMSH_GMSH_H

#include "exchange/Report.h"
#include "exchange/Source.h"

#include <filesystem>
#include <memory>

namespace Gmsh {

/// Whether the file is a mesh of Gmsh, version 2 or later, by what it begins with. Gmsh takes what
/// begins otherwise for a script, unless the ending of the name says what it is.
bool recognises(std::filesystem::path const& path);

/// Opens a mesh of Gmsh; throws `Exchange::Error`. Only one can be open at a time.
std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report);

} // namespace Gmsh

#endif
