#ifndef BENCH_ARGUMENTS_H
#define BENCH_ARGUMENTS_H

#include <cstddef>
#include <functional>
#include <map>
#include <string>

namespace Bench {

/// Flags of one run, each with a value: --name value
class Arguments
{
public:
    Arguments(char const* const* first, char const* const* last);

    /// \throws std::invalid_argument the flag is missing
    std::string const& text(std::string const& name) const;
    /// \throws std::invalid_argument the flag is missing or no number
    std::size_t number(std::string const& name) const;
    /// \throws std::invalid_argument the flag is no number
    std::size_t numberOr(std::string const& name, std::size_t missing) const;

private:
    std::map<std::string, std::string> values_;
};

using Workload = std::function<void(Arguments const&)>;
using Workloads = std::map<std::string, Workload>;

/// The main program of every measured subject: runs the workload that the first argument names.
/// \return the exit status: 1 when the workload fails, 2 for bad usage
int runWorkload(int argc, char** argv, Workloads const& workloads);

} // namespace Bench

#endif
