#pragma once

#include <stdexcept>
#include <string>

namespace MoxRead {

/// Says in one line what is wrong with a file, and where.
class FormatError : public std::runtime_error
{
public:
    explicit FormatError(const std::string& message);

    /// The error of a file that ends early; its text begins with "incomplete: ".
    static FormatError incomplete(const std::string& message);

    bool isIncomplete() const noexcept;

    /// The same error with its place put in front. An incomplete file stays what it is: its first
    /// word has to be that one.
    FormatError within(const std::string& place) const;

private:
    FormatError(const std::string& message, bool incomplete);

    bool incomplete_ = false;
};

/// Runs an action; an error that it raises is told together with the place that `describe` names.
template <typename Describe, typename Action>
auto inContext(const Describe& describe, const Action& action)
{
    try {
        return action();
    } catch (const FormatError& error) {
        throw error.within(describe());
    }
}

} // namespace MoxRead
