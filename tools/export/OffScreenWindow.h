#ifndef EXPORT_OFFSCREENWINDOW_H
#define EXPORT_OFFSCREENWINDOW_H

#include <vtkImageData.h>
#include <vtkRenderWindow.h>
#include <vtkSmartPointer.h>

#include <memory>

namespace Export {

/// A window that is nowhere but in memory: it needs neither a display nor a graphics card.
class OffScreenWindow
{
public:
    /// Throws `Error` when the system has no OpenGL that can do so.
    OffScreenWindow(int width, int height);
    OffScreenWindow(OffScreenWindow const&) = delete;
    OffScreenWindow& operator=(OffScreenWindow const&) = delete;
    ~OffScreenWindow();

    vtkRenderWindow& get() const { return *window_; }
    /// Draws, and returns what is to be seen then.
    vtkSmartPointer<vtkImageData> render();

private:
    class Context;

    std::unique_ptr<Context> context_;
    vtkSmartPointer<vtkRenderWindow> window_;
};

} // namespace Export

#endif
