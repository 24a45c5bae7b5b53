#ifndef READ_ENSIGHT_ENSIGHTCHECK_H
#define READ_ENSIGHT_ENSIGHTCHECK_H

#include "EnSightCase.h"

#include <exchange/Report.h>

#include <filesystem>

namespace VtkRead {

/// Walks through the data files of a case of EnSight. Raises `Exchange::Error` when one was cut
/// off, which VTK's reader does not notice between two values, or is one that it misreads.
/// \return what the case says
EnSightCase requireWholeFiles(std::filesystem::path const& caseFile, Exchange::Report& report);

} // namespace VtkRead

#endif
