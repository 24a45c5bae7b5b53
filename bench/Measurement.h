#ifndef BENCH_MEASUREMENT_H
#define BENCH_MEASUREMENT_H

#include <chrono>
#include <cstdint>
#include <string>

namespace Bench {

/// What one run took.
struct Measurement
{
    double seconds = 0;
    /// Bytes of the values that the host hands over; of paths for a workload without values.
    std::uint64_t bytesIn = 0;
    std::uint64_t bytesOut = 0;
};

/// Resident memory of this process, now.
std::uint64_t residentBytes();

/// The most that it has had.
std::uint64_t peakResidentBytes();

/// All bytes in the regular files of a folder.
std::uint64_t bytesOfFolder(std::string const& folder);

/// Prints a run as one line of JSON, with the peak of resident memory and how far it is beyond
/// what was resident before the clock was started.
void print(Measurement const& measurement, std::uint64_t residentBefore);

/// Runs `action` on the clock and prints what it took.
/// \param bytesIn what it reads
/// \param action  does everything from the first write call to the closed file
/// \param bytesOut asked for the bytes that were written, when the clock has stopped
template <typename Action, typename BytesOut>
void measure(std::uint64_t bytesIn, Action const& action, BytesOut const& bytesOut)
{
    std::uint64_t const residentBefore = residentBytes();
    auto const start = std::chrono::steady_clock::now();
    action();
    std::chrono::duration<double> const elapsed = std::chrono::steady_clock::now() - start;
    print({elapsed.count(), bytesIn, bytesOut()}, residentBefore);
}

/// The same for an action that writes files into a folder of its own.
template <typename Action>
void measureWriting(std::string const& folder, std::uint64_t bytesIn, Action const& action)
{
    measure(bytesIn, action, [&folder] { return bytesOfFolder(folder); });
}

} // namespace Bench

#endif
