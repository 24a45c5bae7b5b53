#include "Messages.h"

#include <vtkLogger.h>

#include <algorithm>
#include <utility>

namespace Vtk {

namespace {

/// VTK's texts have several lines: where in its sources, which object, then what.
std::string inOneLine(std::string const& text)
{
    std::string const behindObject = "): ";
    auto const object = text.find(behindObject);
    auto const firstLine = text.find('\n');
    std::string line = text;
    if (object != std::string::npos)
        line = text.substr(object + behindObject.size());
    else if (firstLine != std::string::npos && text.find(" In ") < firstLine)
        line = text.substr(firstLine + 1);
    std::replace(line.begin(), line.end(), '\n', ' ');
    line.erase(line.find_last_not_of(" .!") + 1);
    return line;
}

} // namespace

class Messages::Window : public vtkOutputWindow
{
public:
    static Window* New()
    {
        auto* const window = new Window;
        window->InitializeObjectBase();
        return window;
    }

    void judgeBy(Judge isError) { isError_ = std::move(isError); }

    Window(Window const&) = delete;
    Window& operator=(Window const&) = delete;

    void DisplayText(char const* /*text*/) override {}
    void DisplayDebugText(char const* /*text*/) override {}
    void DisplayErrorText(char const* text) override { errors_.push_back(inOneLine(text)); }
    void DisplayWarningText(char const* text) override
    {
        std::string const line = inOneLine(text);
        (isError_(line) ? errors_ : warnings_).push_back(line);
    }
    void DisplayGenericWarningText(char const* text) override { DisplayWarningText(text); }

    std::vector<std::string> const& errors() const { return errors_; }
    std::vector<std::string> const& warnings() const { return warnings_; }

protected:
    Window() = default;
    ~Window() override = default;

private:
    Judge isError_;
    std::vector<std::string> errors_;
    std::vector<std::string> warnings_;
};

Messages::Messages(Judge isError)
    : before_(vtkOutputWindow::GetInstance()), window_(vtkSmartPointer<Window>::New()),
      verbosityBefore_(vtkLogger::GetCurrentVerbosityCutoff())
{
    window_->judgeBy(std::move(isError));
    vtkOutputWindow::SetInstance(window_);
    vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_OFF);
}

Messages::~Messages()
{
    vtkOutputWindow::SetInstance(before_);
    vtkLogger::SetStderrVerbosity(static_cast<vtkLogger::Verbosity>(verbosityBefore_));
}

std::vector<std::string> const& Messages::errors() const
{
    return window_->errors();
}

std::vector<std::string> const& Messages::warnings() const
{
    return window_->warnings();
}

} // namespace Vtk
