#ifndef ZYL2_EXCEPTION_RAISE_H
#define ZYL2_EXCEPTION_RAISE_H

#include <Zyl2/Exception/Exception.h>

#include <boost/assert/source_location.hpp>
#include <boost/current_function.hpp>
#include <boost/throw_exception.hpp>

namespace Zyl2 {
namespace Exception {

/// Throws `exception` with the place that a host can ask for.
/// \param source    path of the source without its ending, such as "Zyl2/Wvf/Block"
/// \param line      line that the failure is known by
/// \param signature full signature of the function that fails
template <typename ExceptionT>
[[noreturn]] void raise(ExceptionT const& exception, char const* source, unsigned int line,
                        char const* signature)
{
    boost::throw_exception(exception, boost::source_location(source, line, signature));
}

} // namespace Exception
} // namespace Zyl2

#endif
