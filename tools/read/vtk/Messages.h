#ifndef READ_VTK_MESSAGES_H
#define READ_VTK_MESSAGES_H

#include "SilencedStreams.h"

#include <vtkOutputWindow.h>
#include <vtkSmartPointer.h>

#include <string>
#include <vector>

namespace VtkRead {

/// While it lives, nothing is printed: what VTK says is kept, to be told in one sentence.
class Messages
{
public:
    Messages();
    ~Messages();
    Messages(Messages const&) = delete;
    Messages& operator=(Messages const&) = delete;

    /// Raises `Exchange::Error` with the first error that VTK told, if there was one.
    void raiseError() const;

    /// Each in one line.
    std::vector<std::string> const& warnings() const;

private:
    class Window;

    SilencedStreams silence_;
    vtkSmartPointer<vtkOutputWindow> before_;
    vtkSmartPointer<Window> window_;
    int verbosityBefore_;
};

} // namespace VtkRead

#endif
