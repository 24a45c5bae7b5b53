#ifndef ZYL2_UTIL_ASSERT_H
#define ZYL2_UTIL_ASSERT_H

namespace Zyl2Util {

/// Says which contract was broken, and where, and ends the process. Contracts hold in every build,
/// so this does not go away with NDEBUG.
[[noreturn]] void AssertionFailed(char const* expression, char const* file, unsigned int line,
                                  char const* function) noexcept;

} // namespace Zyl2Util

#endif
