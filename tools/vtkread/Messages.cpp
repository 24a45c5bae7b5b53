#include "Messages.h"

#include <exchange/Error.h>

#include <vtkLogger.h>

#include <algorithm>

namespace VtkRead {

namespace {

/// VTK's texts have several lines: where in its sources, then what.
std::string inOneLine(std::string const& text)
{
    std::string const begin = "): ";
    auto const start = text.find(begin);
    std::string line = start == std::string::npos ? text : text.substr(start + begin.size());
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

    Window(Window const&) = delete;
    Window& operator=(Window const&) = delete;

    void DisplayText(char const* /*text*/) override {}
    void DisplayDebugText(char const* /*text*/) override {}
    void DisplayErrorText(char const* text) override { errors_.push_back(inOneLine(text)); }
    void DisplayWarningText(char const* text) override { warnings_.push_back(inOneLine(text)); }
    void DisplayGenericWarningText(char const* text) override { DisplayWarningText(text); }

    std::vector<std::string> errors_;
    std::vector<std::string> warnings_;

protected:
    Window() = default;
    ~Window() override = default;
};

Messages::Messages()
    : before_(vtkOutputWindow::GetInstance()), window_(vtkSmartPointer<Window>::New()),
      verbosityBefore_(vtkLogger::GetCurrentVerbosityCutoff())
{
    vtkOutputWindow::SetInstance(window_);
    vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_OFF);
}

Messages::~Messages()
{
    vtkOutputWindow::SetInstance(before_);
    vtkLogger::SetStderrVerbosity(static_cast<vtkLogger::Verbosity>(verbosityBefore_));
}

void Messages::raiseError() const
{
    if (!window_->errors_.empty())
        throw Exchange::Error("VTK says: " + window_->errors_.front() + ".");
}

std::vector<std::string> const& Messages::warnings() const
{
    return window_->warnings_;
}

} // namespace VtkRead
