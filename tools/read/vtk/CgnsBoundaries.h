#ifndef READ_VTK_CGNSBOUNDARIES_H
#define READ_VTK_CGNSBOUNDARIES_H

#include <exchange/Report.h>

#include <filesystem>

namespace VtkRead {

/// Warns of the boundaries in a CGNS file. VTK's reader leaves them out, or would take nodes
/// for faces where a boundary is told by its nodes. Raises `Exchange::Error` for a file of which
/// the reader would lose cells, or mix them up.
void reportBoundaries(std::filesystem::path const& path, Exchange::Report& report);

} // namespace VtkRead

#endif
