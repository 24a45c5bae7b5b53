#include "mox/Command.h"

#include "support/Folder.h"

#include <cstdlib>
#include <filesystem>

#include <sys/wait.h>

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

Outcome runInto(std::string const& target, std::string const& arguments)
{
    Support::Folder const folder;
    std::string const err = folder.path("err").string();
    std::string const command =
        std::string(MOX_COMMAND) + " " + arguments + " 2>" + err + " >" + target;
    int const status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, "", contentIfAny(err)};
}

} // namespace MoxTest
