#ifndef MOX_COMMANDS_SUMMARYTEXT_H
#define MOX_COMMANDS_SUMMARYTEXT_H

#include "export/Export.h"
#include "export/View.h"

#include <ostream>
#include <string>

/// Prints what was written, in one line for people.
void printText(Export::ExportSummary const& summary, std::string const& output, std::ostream& out);
void printText(Export::ViewSummary const& summary, std::string const& output, std::ostream& out);

/// The same as a JSON object, for programs.
void printJson(Export::ExportSummary const& summary, std::string const& output, std::ostream& out);
void printJson(Export::ViewSummary const& summary, std::string const& output, std::ostream& out);

#endif
