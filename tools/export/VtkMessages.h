#ifndef EXPORT_VTKMESSAGES_H
#define EXPORT_VTKMESSAGES_H

#include <vtkOutputWindow.h>
#include <vtkSmartPointer.h>

#include <string>

namespace Export {

/// While it lives, VTK prints nothing: its errors are kept to be told in our own words.
class VtkMessages
{
public:
    VtkMessages();
    VtkMessages(VtkMessages const&) = delete;
    VtkMessages& operator=(VtkMessages const&) = delete;
    ~VtkMessages();

    /// The first error, in one line; empty if there was none.
    std::string const& firstError() const;

    /// Throws `Error` when there was an error.
    void check() const;

private:
    vtkSmartPointer<vtkOutputWindow> before_;
    vtkSmartPointer<vtkOutputWindow> own_;
    int verbosityBefore_;
};

} // namespace Export

#endif
