#ifndef VTKEXPORT_SUMMARYTEXT_H
#define VTKEXPORT_SUMMARYTEXT_H

#include "vtkexport/Export.h"
#include "vtkexport/View.h"

#include <string>

namespace VtkExport {

/// What was written, as one line for people.
std::string textOf(ExportSummary const& summary, std::string const& output);
std::string textOf(ViewSummary const& summary, std::string const& output);

/// The same as a JSON object in one line, for programs. Numbers that JSON does not know, such as
/// NaN, are null.
std::string jsonOf(ExportSummary const& summary, std::string const& output);
std::string jsonOf(ViewSummary const& summary, std::string const& output);

} // namespace VtkExport

#endif
