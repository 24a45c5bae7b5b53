#include "FormatsProgram.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace Mox {

namespace {

namespace fs = std::filesystem;

/// In the build tree the programs are beside each other.
fs::path pathOfProgram(fs::path const& place)
{
    fs::path const folder = fs::read_symlink("/proc/self/exe").parent_path();
    fs::path const installed = (folder / place).lexically_normal();
    fs::path const built = folder / installed.filename();
    return !fs::exists(installed) && fs::exists(built) ? built : installed;
}

/// The arguments of this process as they were given, the name of the program included.
std::vector<std::string> ownArguments()
{
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    std::vector<std::string> arguments;
    for (std::string argument; std::getline(file, argument, '\0');)
        arguments.push_back(argument);
    return arguments;
}

std::vector<char*> pointersTo(std::vector<std::string>& arguments)
{
    std::vector<char*> pointers(arguments.size() + 1, nullptr);
    std::transform(arguments.begin(), arguments.end(), pointers.begin(),
                   [](std::string& argument) { return argument.data(); });
    return pointers;
}

} // namespace

void becomeFormatsProgram(fs::path const& place)
{
    fs::path const program = pathOfProgram(place);
    std::vector<std::string> arguments = ownArguments();
    std::cout.flush();
    std::cerr.flush();
    ::execv(program.c_str(), pointersTo(arguments).data());
    std::string const reason = std::generic_category().message(errno);
    throw std::runtime_error(
        program.string() +
        ": This program, which has the libraries that this takes, cannot be run: " + reason + ".");
}

} // namespace Mox
