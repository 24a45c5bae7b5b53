#ifndef ZYL2_DEPRECATED_H
#define ZYL2_DEPRECATED_H

/// Marks what a later version won't have any more: hosts that use it are warned when they are
/// compiled, from C++11 on. The text says what to use instead:
///
///     ZYL2_DEPRECATED("use saveTo") ZYL2_EXPORT void open(std::string const& path);
#define ZYL2_DEPRECATED(text) __attribute__((deprecated(text)))

#endif
