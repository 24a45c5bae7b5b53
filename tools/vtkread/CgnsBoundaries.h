#ifndef VTKREAD_CGNSBOUNDARIES_H
#define VTKREAD_CGNSBOUNDARIES_H

#include <exchange/Report.h>

#include <filesystem>

namespace VtkRead {

/// Warns of the boundaries in a sound CGNS file. VTK's reader leaves them out, or would take nodes
/// for faces where a boundary is told by its nodes.
void reportBoundaries(std::filesystem::path const& path, Exchange::Report& report);

} // namespace VtkRead

#endif
