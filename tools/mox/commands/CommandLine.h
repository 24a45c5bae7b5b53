#ifndef MOX_COMMANDS_COMMANDLINE_H
#define MOX_COMMANDS_COMMANDLINE_H

#include "SubCommand.h"

#include <memory>
#include <string>

namespace Mox {

/// The program's commands. What is given is parsed by CLI11, which only this class, `SubCommand`
/// and `Argument` know: its headers take longer to compile than any command.
class CommandLine
{
public:
    CommandLine(std::string const& name, std::string const& description);
    ~CommandLine();
    CommandLine(CommandLine const&) = delete;
    CommandLine& operator=(CommandLine const&) = delete;

    /// What `--version` prints behind the name of the program.
    void setVersion(std::string const& version);

    SubCommand addCommand(std::string const& name, std::string const& description);

    /// Runs the command that was asked for. Wrong usage gets one line on the error stream.
    /// \return the exit status: the command's, or 2 for wrong usage
    int run(int argc, char** argv);

private:
    std::unique_ptr<CLI::App> app_;
    int exitStatus_ = 0;
};

} // namespace Mox

#endif
