#ifndef ZYL2_EXCEPTION_SENTENCE_H
#define ZYL2_EXCEPTION_SENTENCE_H

#include <Zyl2/Exception/Exception.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace Zyl2 {
namespace Exception {

void appendPart(std::string& sentence, std::string_view text);
void appendPart(std::string& sentence, std::int64_t number);
void appendPart(std::string& sentence, std::uint64_t number);
void appendPart(std::string& sentence, double number);

/// Joins text and numbers to what a failure says beside its text.
/// \return empty where there is no memory: the failure that is told of must not become another one
template <typename... Parts>
std::string sentence(Parts const&... parts) noexcept
{
    auto const append = [](std::string& joined, auto const& part) {
        using Part = std::decay_t<decltype(part)>;
        if constexpr (std::is_floating_point_v<Part>)
            appendPart(joined, static_cast<double>(part));
        else if constexpr (std::is_integral_v<Part> && std::is_signed_v<Part>)
            appendPart(joined, static_cast<std::int64_t>(part));
        else if constexpr (std::is_integral_v<Part>)
            appendPart(joined, static_cast<std::uint64_t>(part));
        else
            appendPart(joined, std::string_view(part));
    };
    try {
        std::string joined;
        (append(joined, parts), ...);
        return joined;
    } catch (...) {
        return {};
    }
}

/// Gives a failure its detail; one that has a detail keeps it. Without memory, or when the detail
/// is empty, the failure stays as it is.
void attachDetail(Exception const& failure, std::string_view detail) noexcept;

} // namespace Exception
} // namespace Zyl2

#endif
