#ifndef MOX_FORMATS_LIBRARIES_H
#define MOX_FORMATS_LIBRARIES_H

#include "Library.h"

#include <exchange/Translation.h>
#include <export/Export.h>
#include <export/View.h>
#include <read/vtk/FileKind.h>

#include <functional>
#include <string>

namespace Mox {

// All that depends on which libraries of other formats a program is linked with. The source is
// compiled once for each program, and its definitions tell: MOX_WITH_VTK, MOX_WITH_EXODUS and
// MOX_WITH_GMSH which libraries are there, MOX_VTK_PROGRAM, MOX_EXODUS_PROGRAM and MOX_GMSH_PROGRAM
// which other program has one.

/// What opens files of other formats; empty where the library that it takes is not built in.
Exchange::SourceOpener vtkOpener(VtkRead::FileKind kind);
Exchange::SourceOpener exodusOpener();
Exchange::SourceOpener gmshOpener();

/// As `Export::exportModel` and `Export::viewModel`; throw `Export::Error`, which says so, where
/// VTK is not built in.
Export::ExportSummary exportWithVtk(std::string const& input, std::string const& output,
                                    Export::ExportOptions const& options);
Export::ViewSummary viewWithVtk(std::string const& input, std::string const& output,
                                Export::ViewOptions const& options);

/// Runs an action that needs a library and returns its exit status. Libraries take longer to load
/// than most commands take to run, so `mox` itself has none of them: there the action is left to
/// the program that has this one. A program that can't be run gets one line on the error stream,
/// which begins with the name of the command. Where no program has the library, the action runs
/// here, and says so.
int runWithLibrary(Library library, std::string const& command, std::function<int()> const& action);

} // namespace Mox

#endif
