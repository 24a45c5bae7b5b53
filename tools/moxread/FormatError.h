#ifndef MOXREAD_FORMATERROR_H
#define MOXREAD_FORMATERROR_H

#include "moxread/Export.h"

#include <stdexcept>
#include <string>

namespace MoxRead {

/// Says in one line what is wrong with a file, and where.
class MOXREAD_EXPORT FormatError : public std::runtime_error
{
public:
    explicit FormatError(std::string const& message);

    /// The error of a file that ends early; its text begins with "incomplete: ".
    static FormatError incomplete(std::string const& message);

    /// The same error with its place put in front. An incomplete file stays what it is: its first
    /// word has to be that one.
    FormatError within(std::string const& place) const;

    /// Whether it is the error of a file that ends early.
    bool isIncomplete() const { return incomplete_; }

private:
    FormatError(std::string const& message, bool incomplete);

    bool incomplete_ = false;
};

/// Runs an action; an error that it raises is told together with the place that `describe` names.
template <typename Describe, typename Action>
auto inContext(Describe const& describe, Action const& action)
{
    try {
        return action();
    } catch (FormatError const& error) {
        throw error.within(describe());
    }
}

} // namespace MoxRead

#endif
