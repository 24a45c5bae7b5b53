#ifndef TESTS_MOX_COMMAND_H
#define TESTS_MOX_COMMAND_H

#include <string>

namespace MoxTest {

struct Outcome
{
    int status = 0;
    std::string out;
    std::string err;
};

/// Runs the command `mox` with arguments as a shell takes them.
/// \param prefix what the shell does before, such as "ulimit -f 1;"
Outcome run(std::string const& arguments, std::string const& prefix = "");

/// Runs it with an error stream that is a terminal; `err` is all that the terminal was sent.
Outcome runOnTerminal(std::string const& arguments, std::string const& prefix = "");

/// Runs it with an output stream that goes to a file or device.
Outcome runInto(std::string const& target, std::string const& arguments);

/// Runs it with an output stream that nobody reads any more.
Outcome runIntoClosedPipe(std::string const& arguments);

} // namespace MoxTest

#endif
