#include "Zyl2/Util/Assert.h"

#include <cstdio>
#include <cstdlib>

namespace Zyl2Util {

void AssertionFailed(char const* expression, char const* file, unsigned int line,
                     char const* function) noexcept
{
    std::fprintf(stderr, "%s:%u: %s: Assertion `%s' failed.\n", file, line, function, expression);
    std::fflush(stderr);
    std::abort();
}

void AssertionFailed(Zyl2::Exception::AssertionSite const& site) noexcept
{
    AssertionFailed(site.expression, site.source, site.line, site.function);
}

} // namespace Zyl2Util
