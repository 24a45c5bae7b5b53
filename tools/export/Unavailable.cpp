// Stands in for the library where VTK is not there, so that the commands can say so.

#include "Error.h"
#include "Export.h"
#include "View.h"

namespace Export {

namespace {

[[noreturn]] void failWithoutVtk()
{
    throw Error(
        "This mox was built without VTK; it needs the package libvtk9-dev when it is built.");
}

} // namespace

ExportSummary exportModel(std::string const& /*input*/, std::string const& /*output*/,
                          ExportOptions const& /*options*/)
{
    failWithoutVtk();
}

ViewSummary viewModel(std::string const& /*input*/, std::string const& /*output*/,
                      ViewOptions const& /*options*/)
{
    failWithoutVtk();
}

} // namespace Export
