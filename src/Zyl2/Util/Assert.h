#ifndef ZYL2_UTIL_ASSERT_H
#define ZYL2_UTIL_ASSERT_H

#include "Zyl2/Exception/Sites.h"

namespace Zyl2Util {

/// Says which contract was broken, and where, and ends the process. Contracts hold in every build,
/// so this does not go away with NDEBUG.
[[noreturn]] void AssertionFailed(char const* expression, char const* file, unsigned int line,
                                  char const* function) noexcept;

/// The same for a place that is known by its site.
[[noreturn]] void AssertionFailed(Zyl2::Exception::AssertionSite const& site) noexcept;

} // namespace Zyl2Util

#endif
