#ifndef BINDINGS_MODEL_REFUSAL_H
#define BINDINGS_MODEL_REFUSAL_H

#include <Zyl2/Exception/Exception.h>

#include <boost/exception/info.hpp>
#include <boost/throw_exception.hpp>

#include <string>

namespace Bindings {

/// Fails as the library would, with the kind's default text.
/// \param detail what was wrong
template <typename FailureT>
[[noreturn]] void refuse(std::string const& detail)
{
    FailureT failure;
    failure << Zyl2::Exception::Detail(detail);
    boost::throw_exception(failure);
}

} // namespace Bindings

#endif
