#include "mox/Command.h"

#include "support/Folder.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace MoxTest {

namespace {

std::string contentIfAny(std::filesystem::path const& path)
{
    return std::filesystem::exists(path) ? Support::contentOf(path) : "";
}

/// A terminal that keeps what it is sent, as long as it isn't much.
class Terminal
{
public:
    Terminal()
    {
        std::array<char, 256> name = {};
        if (::openpty(&mine_, &theirs_, name.data(), nullptr, nullptr) != 0)
            throw std::runtime_error("no terminal for the test");
        ::fcntl(mine_, F_SETFL, O_NONBLOCK);
        name_ = name.data();
    }

    ~Terminal()
    {
        ::close(mine_);
        ::close(theirs_);
    }

    Terminal(Terminal const&) = delete;
    Terminal& operator=(Terminal const&) = delete;

    std::string const& name() const { return name_; }

    std::string text() const
    {
        std::string result;
        std::array<char, 4096> piece = {};
        for (ssize_t count = 1; count > 0;) {
            count = ::read(mine_, piece.data(), piece.size());
            if (count > 0)
                result.append(piece.data(), static_cast<std::size_t>(count));
        }
        return result;
    }

private:
    int mine_ = -1;
    int theirs_ = -1;
    std::string name_;
};

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
    Terminal const terminal;
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
