#ifndef MOX_PRINT_SUMMARYTEXT_H
#define MOX_PRINT_SUMMARYTEXT_H

#include "export/Export.h"
#include "export/View.h"

#include <ostream>
#include <string>

namespace Mox {

/// Prints what was written, in one line for people.
void printText(Export::ExportSummary const& summary, std::string const& output, std::ostream& out);
void printText(Export::ViewSummary const& summary, std::string const& output, std::ostream& out);

/// The same as a JSON object, for programs.
void printJson(Export::ExportSummary const& summary, std::string const& output, std::ostream& out);
void printJson(Export::ViewSummary const& summary, std::string const& output, std::ostream& out);

} // namespace Mox

#endif
