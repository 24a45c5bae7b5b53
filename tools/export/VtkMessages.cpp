#include "VtkMessages.h"

#include "Error.h"

#include <vtkLogger.h>
#include <vtkObjectFactory.h>

#include <algorithm>

namespace Export {

namespace {

// VTK's texts go over several lines: where in its sources, then what.
std::string inOneLine(std::string const& text)
{
    std::string const begin = "): ";
    auto const start = text.find(begin);
    std::string line = start == std::string::npos ? text : text.substr(start + begin.size());
    std::replace(line.begin(), line.end(), '\n', ' ');
    line.erase(line.find_last_not_of(" .") + 1);
    return line;
}

class KeptMessages : public vtkOutputWindow
{
public:
    static KeptMessages* New();
    vtkTypeMacro(KeptMessages, vtkOutputWindow) KeptMessages(KeptMessages const&) = delete;
    KeptMessages& operator=(KeptMessages const&) = delete;

    void DisplayText(char const* /*text*/) override {}
    void DisplayWarningText(char const* /*text*/) override {}
    void DisplayGenericWarningText(char const* /*text*/) override {}
    void DisplayDebugText(char const* /*text*/) override {}
    void DisplayErrorText(char const* text) override
    {
        if (firstError_.empty())
            firstError_ = inOneLine(text);
    }

    std::string const& firstError() const { return firstError_; }

protected:
    KeptMessages() = default;
    ~KeptMessages() override = default;

private:
    std::string firstError_;
};

vtkStandardNewMacro(KeptMessages)

} // namespace

VtkMessages::VtkMessages()
    : before_(vtkOutputWindow::GetInstance()), own_(vtkSmartPointer<KeptMessages>::New()),
      verbosityBefore_(vtkLogger::GetCurrentVerbosityCutoff())
{
    vtkOutputWindow::SetInstance(own_);
    vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_OFF);
}

VtkMessages::~VtkMessages()
{
    vtkOutputWindow::SetInstance(before_);
    vtkLogger::SetStderrVerbosity(static_cast<vtkLogger::Verbosity>(verbosityBefore_));
}

std::string const& VtkMessages::firstError() const
{
    return static_cast<KeptMessages const&>(*own_).firstError();
}

void VtkMessages::check() const
{
    if (!firstError().empty())
        throw Error("VTK says: " + firstError() + ".");
}

} // namespace Export
