#ifndef MOX_COMMANDS_ARGUMENT_H
#define MOX_COMMANDS_ARGUMENT_H

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class Option;
}

namespace Mox {

/// An argument of a command, as it was added.
class Argument
{
public:
    /// What is wrong with a text that was given; nothing if it can be taken.
    using Complaint = std::function<std::string(std::string const& text)>;

    explicit Argument(CLI::Option& option) : option_(&option) {}

    Argument& required();
    /// What stands for the value in the help.
    Argument& placeholder(std::string const& text);
    Argument& check(Complaint const& complaint);
    /// Takes these texts only. The placeholder has to tell them.
    Argument& oneOf(std::vector<std::string> const& texts);
    Argument& excludes(Argument const& other);
    Argument& needs(Argument const& other);

private:
    CLI::Option* option_;
};

} // namespace Mox

#endif
