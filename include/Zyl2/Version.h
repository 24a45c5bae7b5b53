#ifndef ZYL2_VERSION_H
#define ZYL2_VERSION_H

#include <Zyl2/Export.h>

// The version of these headers, for the preprocessor.
#define ZYL2_VERSION_MAJOR 0
#define ZYL2_VERSION_MINOR 9
#define ZYL2_VERSION_PATCH 0

/// The version as text, such as "1.2.3".
#define ZYL2_VERSION_STRING "0.9.0"

/// The number of a version: newer ones have larger numbers. Minor and patch are below 1000.
#define ZYL2_VERSION_NUMBER(major, minor, patch) ((major)*1000000 + (minor)*1000 + (patch))

/// The number of the version of these headers:
/// `#if ZYL2_VERSION >= ZYL2_VERSION_NUMBER(1, 2, 0)` asks whether they have what 1.2.0 brought.
#define ZYL2_VERSION ZYL2_VERSION_NUMBER(ZYL2_VERSION_MAJOR, ZYL2_VERSION_MINOR, ZYL2_VERSION_PATCH)

namespace Zyl2 {

/// The version of the library in use, which is another than that of the headers when a newer shared
/// library was installed after the host was compiled. Neither function throws.
/// \return as `ZYL2_VERSION` counts
ZYL2_EXPORT int version() noexcept;

/// \return the same as text, such as "1.2.3"; it lives as long as the program
ZYL2_EXPORT char const* versionString() noexcept;

} // namespace Zyl2

#endif
