#ifndef ZYL2_MPI_FAILURE_H
#define ZYL2_MPI_FAILURE_H

#include <array>

namespace Zyl2 {
namespace Mpi {

/// What a rank failed at, in a form that takes no memory to keep and to send.
struct Failure
{
    bool isThere = false;
    int code = 0;
    std::array<char, 1024> sentence{};

    /// Keeps the exception that is being handled, unless there is an earlier one.
    void remember() noexcept;
    /// Keeps a sentence, unless there is an earlier one.
    void remember(int errorCode, char const* text) noexcept;
};

} // namespace Mpi
} // namespace Zyl2

#endif
