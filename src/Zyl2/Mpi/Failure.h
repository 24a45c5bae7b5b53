#ifndef ZYL2_MPI_FAILURE_H
#define ZYL2_MPI_FAILURE_H

#include <Zyl2/Exception/Exception.h>

#include <array>
#include <string>

#include <boost/current_function.hpp>
#include <boost/exception/info.hpp>
#include <boost/throw_exception.hpp>

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

/// Throws with the place that a host can ask for, and with what exactly was wrong.
template <typename ExceptionT>
[[noreturn]] void raise(char const* function, std::string const& detail)
{
    ExceptionT failure;
    failure << Exception::Detail(detail);
    boost::throw_exception(failure, boost::source_location("Zyl2/Mpi", 1, function));
}

} // namespace Mpi
} // namespace Zyl2

#endif
