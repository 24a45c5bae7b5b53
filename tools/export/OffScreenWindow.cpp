#include "OffScreenWindow.h"

#include "Error.h"

// This header has to be included before any other that includes OpenGL's own headers.
#include <vtk_glew.h>

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkWindowToImageFilter.h>

#include <array>

namespace Export {

namespace {

void require(bool condition)
{
    if (!condition)
        throw Error("There is no OpenGL that can draw without a display.");
}

/// VTK's window for a context that somebody else made.
class ContextWindow : public vtkGenericOpenGLRenderWindow
{
public:
    static ContextWindow* New();
    vtkTypeMacro(ContextWindow, vtkGenericOpenGLRenderWindow)
        ContextWindow(ContextWindow const&) = delete;
    ContextWindow& operator=(ContextWindow const&) = delete;

    // Having loaded all of OpenGL's functions, the loader looks for an X display, too, and VTK
    // would give up when there is none.
    void OpenGLInitContext() override
    {
        if (Initialized)
            return;
        GLenum const status = glewInit();
        GlewInitValid = status == GLEW_OK || status == GLEW_ERROR_NO_GLX_DISPLAY;
        Initialized = GlewInitValid;
        // With no line wider than 1, VTK draws wide lines as faces.
        MaximumHardwareLineWidth = 1;
        ContextCreationTime.Modified();
    }

    bool hasFunctions() const { return GlewInitValid; }

protected:
    ContextWindow() { GlewInitValid = false; }
    ~ContextWindow() override = default;
};

vtkStandardNewMacro(ContextWindow)

} // namespace

/// OpenGL without anything to draw on: VTK draws into buffers of its own.
class OffScreenWindow::Context
{
public:
    Context() : display_(openDisplay())
    {
        require(eglBindAPI(EGL_OPENGL_API) == EGL_TRUE);
        context_ = createContext();
        require(eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_) == EGL_TRUE);
    }

    Context(Context const&) = delete;
    Context& operator=(Context const&) = delete;

    ~Context()
    {
        eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        eglDestroyContext(display_, context_);
        eglTerminate(display_);
    }

private:
    static EGLDisplay openDisplay()
    {
        EGLDisplay const surfaceless =
            eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
        if (eglInitialize(surfaceless, nullptr, nullptr) == EGL_TRUE)
            return surfaceless;
        EGLDisplay const usual = eglGetDisplay(EGL_DEFAULT_DISPLAY);
        require(eglInitialize(usual, nullptr, nullptr) == EGL_TRUE);
        return usual;
    }

    EGLContext createContext() const
    {
        // By default EGL looks for configurations that draw on windows, and there is none.
        std::array<EGLint, 5> const wanted = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT,
                                              EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
        EGLConfig config = nullptr;
        EGLint count = 0;
        eglChooseConfig(display_, wanted.data(), &config, 1, &count);
        require(count > 0);
        // OpenGL 3.2 is the oldest version that VTK works with.
        std::array<EGLint, 5> const version = {EGL_CONTEXT_MAJOR_VERSION, 3,
                                               EGL_CONTEXT_MINOR_VERSION, 2, EGL_NONE};
        EGLContext const context =
            eglCreateContext(display_, config, EGL_NO_CONTEXT, version.data());
        require(context != EGL_NO_CONTEXT);
        return context;
    }

    EGLDisplay display_;
    EGLContext context_ = EGL_NO_CONTEXT;
};

OffScreenWindow::OffScreenWindow(int width, int height) : context_(std::make_unique<Context>())
{
    vtkNew<ContextWindow> window;
    window->SetReadyForRendering(true);
    window->SetIsCurrent(true);
    window->SetOwnContext(0);
    window->SetOffScreenRendering(1);
    window->SetMultiSamples(0);
    window->SetSize(width, height);
    window->OpenGLInitContext();
    require(window->hasFunctions());
    window_ = window;
}

OffScreenWindow::~OffScreenWindow()
{
    // What VTK has on the graphics side must go while there is a context.
    window_->Finalize();
    window_ = nullptr;
}

vtkSmartPointer<vtkImageData> OffScreenWindow::render()
{
    window_->Render();
    vtkNew<vtkWindowToImageFilter> filter;
    filter->SetInput(window_);
    filter->ReadFrontBufferOff();
    filter->ShouldRerenderOff();
    filter->Update();
    return filter->GetOutput();
}

} // namespace Export
