#include "mox/Command.h"

#include "support/Folder.h"
#include "support/Terminal.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

namespace MoxTest {

namespace {

std::string contentIfAny(std::filesystem::path const& path)
{
    return std::filesystem::exists(path) ? Support::contentOf(path) : "";
}

} // namespace

Outcome run(std::string const& arguments, std::string const& prefix)
{
    Support::Folder const folder;
    std::string const out = folder.path("out").string();
    std::string const err = folder.path("err").string();
    std::string const command =
        prefix + " " + MOX_COMMAND + " " + arguments + " >" + out + " 2>" + err;
    int const status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentIfAny(out), contentIfAny(err)};
}

Outcome runOnTerminal(std::string const& arguments, std::string const& prefix)
{
    Support::Folder const folder;
    Support::Terminal const terminal;
    std::string const out = folder.path("out").string();
    std::string const command =
        prefix + " " + MOX_COMMAND + " " + arguments + " >" + out + " 2>" + terminal.name();
    int const status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentIfAny(out), terminal.text()};
}

Outcome runInto(std::string const& target, std::string const& arguments)
{
    Support::Folder const folder;
    std::string const err = folder.path("err").string();
    std::string const command =
        std::string(MOX_COMMAND) + " " + arguments + " 2>" + err + " >" + target;
    int const status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, "", contentIfAny(err)};
}

Outcome runIntoClosedPipe(std::string const& arguments)
{
    std::array<int, 2> ends = {};
    if (::pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe for the test");
    ::close(ends[0]);
    Outcome const outcome = runInto("&" + std::to_string(ends[1]), arguments);
    ::close(ends[1]);
    return outcome;
}

} // namespace MoxTest
