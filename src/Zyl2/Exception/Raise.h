#ifndef ZYL2_EXCEPTION_RAISE_H
#define ZYL2_EXCEPTION_RAISE_H

#include <Zyl2/Exception/Exception.h>

#include "Zyl2/Exception/Sentence.h"
#include "Zyl2/Exception/Sites.h"

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

/// The failure of a site in a template, which only the place that fails can name.
/// \param signature full signature of the function that fails
template <typename KindT>
[[noreturn]] void raiseFrom(Site<KindT> const& site, char const* signature)
{
    raise(site.text == nullptr ? KindT() : KindT(site.text), site.source, site.line, signature);
}

/// The failure of a site.
template <typename KindT>
[[noreturn]] void raise(Site<KindT> const& site)
{
    raiseFrom(site, site.function);
}

/// The failure of a site in a template, and what exactly was wrong.
template <typename KindT>
[[noreturn]] void raiseFrom(Site<KindT> const& site, char const* signature, std::string_view detail)
{
    KindT const failure = site.text == nullptr ? KindT() : KindT(site.text);
    attachDetail(failure, detail);
    raise(failure, site.source, site.line, signature);
}

/// The failure of a site, and what exactly was wrong.
template <typename KindT>
[[noreturn]] void raise(Site<KindT> const& site, std::string_view detail)
{
    raiseFrom(site, site.function, detail);
}

} // namespace Exception
} // namespace Zyl2

#endif
