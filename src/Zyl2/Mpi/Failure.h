#ifndef ZYL2_MPI_FAILURE_H
#define ZYL2_MPI_FAILURE_H

#include "Zyl2/Exception/Sites.h"

#include <array>
#include <string>

#include <boost/assert/source_location.hpp>
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

/// Throws the failure of a site, with what exactly was wrong. Of the other library's helper this
/// one sees but a hidden symbol.
template <typename KindT>
[[noreturn]] void raiseWith(Exception::Site<KindT> const& site, std::string const& detail)
{
    KindT failure;
    failure << Exception::Detail(detail);
    boost::throw_exception(failure, boost::source_location(site.source, site.line, site.function));
}

} // namespace Mpi
} // namespace Zyl2

#endif
