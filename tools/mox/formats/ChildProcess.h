#ifndef MOX_FORMATS_CHILDPROCESS_H
#define MOX_FORMATS_CHILDPROCESS_H

#include <functional>
#include <optional>

#include <sys/types.h>

namespace Mox {

/// How a child process ended.
struct ChildResult
{
    pid_t id = 0;
    /// Exit status of the process; nothing when it was ended by a signal.
    std::optional<int> status;
    /// The signal that ended the process; 0 when it ended by itself.
    int signal = 0;
};

/// Runs an action in a process of its own, so that its crash is not ours. What it returns becomes
/// the exit status; what it writes to the standard streams is written when it ends. It is killed
/// when we end before, and gets the signals first that end us. Must be called while there is one
/// thread only.
ChildResult runInChild(std::function<int()> const& action);

} // namespace Mox

#endif
