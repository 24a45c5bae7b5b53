#include "Messages.h"

#include <exchange/Error.h>

#include <vtkLogger.h>

#include <algorithm>
#include <cctype>

namespace VtkRead {

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

/// Some readers only warn when values are missing or aren't what they should be.
bool tellsOfDamage(std::string const& warning)
{
    std::string lower = warning;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    for (char const* const word : {"error", "mismatch", "premature", "end of file", "too short",
                                   "truncated", "could not", "cannot", "can't", "unable", "failed"})
        if (lower.find(word) != std::string::npos)
            return true;
    return false;
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
    void DisplayWarningText(char const* text) override
    {
        std::string const line = inOneLine(text);
        (tellsOfDamage(line) ? errors_ : warnings_).push_back(line);
    }
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
