#ifndef EXPORT_STAGES_H
#define EXPORT_STAGES_H

#include <cstddef>
#include <functional>

namespace Export {

/// Counts the stages of some work, for somebody who waits for it.
class Stages
{
public:
    /// Told how many stages are done, and of how many.
    using Listener = std::function<void(std::size_t, std::size_t)>;

    Stages(Listener const& listener, std::size_t count) : listener_(listener), count_(count) {}

    void finishOne() { listener_(++done_, count_); }

private:
    Listener const& listener_;
    std::size_t count_;
    std::size_t done_ = 0;
};

} // namespace Export

#endif
