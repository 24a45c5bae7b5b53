#ifndef BINDINGS_PYTHON_REFUSAL_H
#define BINDINGS_PYTHON_REFUSAL_H

#include <Zyl2/Exception/Exception.h>

#include <boost/exception/info.hpp>

#include <string>

namespace Python {

/// Fails as the library would, with the kind's default text.
/// \param detail what was wrong
template <typename FailureT>
[[noreturn]] void refuse(std::string const& detail)
{
    FailureT failure;
    failure << Zyl2::Exception::Detail(detail);
    throw failure;
}

} // namespace Python

#endif
