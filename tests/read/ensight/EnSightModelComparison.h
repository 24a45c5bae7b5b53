#ifndef TESTS_READ_ENSIGHT_ENSIGHTMODELCOMPARISON_H
#define TESTS_READ_ENSIGHT_ENSIGHTMODELCOMPARISON_H

#include "EnSightModel.h"
#include "read/vtk/OpenedFile.h"

#include <string>

/// \return the first thing in which a case of EnSight that was read is another than the one that
/// was written; empty if it is the same
std::string differenceOf(OpenedFile const& file, EnSightModel const& model);

#endif
