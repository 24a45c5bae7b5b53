#ifndef TESTS_LARGE_FIGURES_H
#define TESTS_LARGE_FIGURES_H

#include <chrono>
#include <cstdint>
#include <string>

namespace Large {

/// The most memory that the process ever had resident, in bytes.
std::uint64_t peakMemory();

/// Prints how long each stage took and what memory it needed: a large file that is right but takes
/// ten times as long, or as much memory, would pass every comparison.
class Figures
{
public:
    /// \param subject begins each line
    explicit Figures(std::string subject);

    /// Ends a stage; the next one begins.
    void lap(std::string const& stage, std::uint64_t bytes);

private:
    std::string subject_;
    std::chrono::steady_clock::time_point start_;
};

} // namespace Large

#endif
