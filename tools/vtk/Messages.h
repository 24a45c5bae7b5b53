#ifndef VTK_MESSAGES_H
#define VTK_MESSAGES_H

#include <vtkOutputWindow.h>
#include <vtkSmartPointer.h>

#include <functional>
#include <string>
#include <vector>

namespace Vtk {

/// While it lives, VTK prints nothing: what it says is kept, to be told in one sentence.
class Messages
{
public:
    /// Whether a warning, in one line, tells of a failure.
    using Judge = std::function<bool(std::string const& warning)>;

    /// \param isError which warnings count as errors; without it, none
    explicit Messages(Judge isError = [](std::string const&) { return false; });
    ~Messages();
    Messages(Messages const&) = delete;
    Messages& operator=(Messages const&) = delete;

    /// Throws an `Error`, of the caller's own type, with the first error that VTK told, if there
    /// was one.
    template <typename Error>
    void raiseError() const
    {
        if (!errors().empty())
            throw Error("VTK says: " + errors().front() + ".");
    }

    /// Each in one line, in the order in which they came.
    std::vector<std::string> const& errors() const;
    std::vector<std::string> const& warnings() const;

private:
    class Window;

    vtkSmartPointer<vtkOutputWindow> before_;
    vtkSmartPointer<Window> window_;
    int verbosityBefore_;
};

} // namespace Vtk

#endif
