#ifndef COMMON_PROGRESS_H
#define COMMON_PROGRESS_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include <unistd.h>

namespace Common {

/// A bar on a terminal for work that lasts longer than a second. Shows nothing when the stream is
/// no terminal, and leaves nothing behind.
///
///     Common::Progress progress("verify beam.mox");
///     while (done < all)
///         progress.show(done += work(), all);
class Progress
{
public:
    using Time = std::chrono::steady_clock::time_point;
    using Clock = std::function<Time()>;

    /// The clock starts now.
    explicit Progress(std::string what, int descriptor = STDERR_FILENO,
                      Clock clock = std::chrono::steady_clock::now);
    /// Wipes the bar off.
    ~Progress();
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    /// To be called often: it draws at most ten times a second.
    void show(std::uint64_t done, std::uint64_t all);

    /// Wipes the bar off, before something else is printed.
    void wipe();

    /// Wipes off the bar of a process that did not live to do so.
    static void wipeLeftOver(int descriptor = STDERR_FILENO);

private:
    std::size_t columns() const;
    std::string line(unsigned percent) const;

    std::string what_;
    int descriptor_;
    Clock clock_;
    bool isTerminal_;
    Time next_;
    bool isDrawn_ = false;
};

} // namespace Common

#endif
