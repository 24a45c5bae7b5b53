#ifndef READ_ENSIGHT_ENSIGHTFAULTS_H
#define READ_ENSIGHT_ENSIGHTFAULTS_H

#include "EnSightCase.h"
#include "EnSightFile.h"
#include "EnSightMesh.h"
#include "EnSightVariableWalker.h"

#include <exchange/Report.h>

namespace VtkRead {

/// Sound files of EnSight that VTK 9.1's reader gets wrong, crashes on or never comes to an end
/// with. Each of these raises `Exchange::Error` for them.
namespace EnSightFaults {

void requireReadable(EnSightCase const& description, EnSightFile::Format format);

void requireReadable(EnSightMesh const& mesh, EnSightFile::Format format);

void requireReadable(EnSightCase::Variable const& variable, EnSightMesh const& mesh,
                     EnSightFile::Format format);

/// Of what a walk through all values of a variable has seen.
void requireReadable(EnSightCase const& description, EnSightCase::Variable const& variable,
                     EnSightVariableWalker const& values, EnSightFile const& file);

/// Warns of constants, which do not come out.
void tellOfLosses(EnSightCase const& description, Exchange::Report& report);

/// Warns of elements that come out as linear ones, and of blanked ones that come out.
void tellOfLosses(EnSightMesh const& mesh, EnSightFile::Format format, Exchange::Report& report);

} // namespace EnSightFaults

} // namespace VtkRead

#endif
