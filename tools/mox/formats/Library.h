#ifndef MOX_FORMATS_LIBRARY_H
#define MOX_FORMATS_LIBRARY_H

namespace Mox {

/// What other formats are read and written with. `None`: by this project's own code.
enum class Library
{
    None,
    Vtk,
    Exodus,
    Gmsh
};

} // namespace Mox

#endif
