#ifndef MOX_SUMMARYTEXT_H
#define MOX_SUMMARYTEXT_H

#include "vtkexport/Export.h"
#include "vtkexport/View.h"

#include <ostream>
#include <string>

/// Prints what was written, in one line for people.
void printText(VtkExport::ExportSummary const& summary, std::string const& output,
               std::ostream& out);
void printText(VtkExport::ViewSummary const& summary, std::string const& output, std::ostream& out);

/// The same as a JSON object, for programs.
void printJson(VtkExport::ExportSummary const& summary, std::string const& output,
               std::ostream& out);
void printJson(VtkExport::ViewSummary const& summary, std::string const& output, std::ostream& out);

#endif
