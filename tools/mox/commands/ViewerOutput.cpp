#include "ViewerOutput.h"

#include <exception>
#include <utility>

namespace Mox {

ViewerOutput::ViewerOutput(std::string command, std::string path, bool asJson, std::ostream& out,
                           std::ostream& err)
    : command_(std::move(command)), path_(std::move(path)), asJson_(asJson), out_(out), err_(err)
{}

int ViewerOutput::run(std::function<void()> const& action) const
{
    try {
        action();
        return 0;
    } catch (std::exception const& error) {
        err_ << "mox " << command_ << ": " << error.what() << '\n';
        return 1;
    }
}

void ViewerOutput::tellWarnings(std::vector<std::string> const& warnings) const
{
    for (std::string const& warning : warnings)
        err_ << "mox " << command_ << ": warning: " << warning << '\n';
}

} // namespace Mox
