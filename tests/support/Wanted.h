#ifndef TESTS_SUPPORT_WANTED_H
#define TESTS_SUPPORT_WANTED_H

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace Support {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSanitized = true;
#elif defined(__has_feature)
constexpr bool isSanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool isSanitized = false;
#endif

/// How many random cases somebody wants of a test: as many as the environment variable says.
inline std::uint32_t wanted(char const* variable, std::uint32_t usual)
{
    char const* const text = std::getenv(variable);
    return text == nullptr ? usual : static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10));
}

/// The same of a test that takes ten times as long under a sanitizer, which finds in each case what
/// others compare with something.
inline std::uint32_t wanted(char const* variable, std::uint32_t usual, std::uint32_t sanitized)
{
    return wanted(variable, isSanitized ? sanitized : usual);
}

/// From one place of a sweep to the next: where sanitized builds go so far at a time, others go to
/// each place.
constexpr std::size_t stride(std::size_t sanitized)
{
    return isSanitized ? sanitized : 1;
}

} // namespace Support

#endif
