#ifndef EXPORT_PARTSEXPORT_H
#define EXPORT_PARTSEXPORT_H

#include "Export.h"

#include <string>

namespace Export {

/// Writes the files that an index names as one collection: a grid for each file and step, in a
/// folder for each file. One file, and one step of it, is in memory at a time.
///
/// Throws `Error` as `exportModel` does.
ExportSummary exportParts(std::string const& index, std::string const& output,
                          ExportOptions const& options);

} // namespace Export

#endif
