#ifndef ZYL2_EXCEPTION_SENTENCE_H
#define ZYL2_EXCEPTION_SENTENCE_H

#include <Zyl2/Exception/Exception.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace Zyl2 {
namespace Exception {

/// A text or a number of a sentence. The text has to live as long.
class SentencePart
{
public:
    template <typename T>
    explicit SentencePart(T const& value) noexcept : value_(valueOf(value))
    {}

    void appendTo(std::string& sentence) const;

private:
    using Value = std::variant<std::string_view, std::int64_t, std::uint64_t, double>;

    template <typename T>
    static Value valueOf(T const& value) noexcept
    {
        if constexpr (std::is_floating_point_v<T>)
            return static_cast<double>(value);
        else if constexpr (std::is_integral_v<T> && std::is_signed_v<T>)
            return static_cast<std::int64_t>(value);
        else if constexpr (std::is_integral_v<T>)
            return static_cast<std::uint64_t>(value);
        else
            return std::string_view(value);
    }

    Value value_;
};

/// \return empty where there is no memory: the failure that is told of must not become another one
std::string joined(std::initializer_list<SentencePart> parts) noexcept;

/// Joins text and numbers to what a failure says beside its text.
template <typename... Parts>
std::string sentence(Parts const&... parts) noexcept
{
    return joined({SentencePart(parts)...});
}

/// Gives a failure its detail; one that has a detail keeps it. Without memory, or when the detail
/// is empty, the failure stays as it is.
void attachDetail(Exception const& failure, std::string_view detail) noexcept;

} // namespace Exception
} // namespace Zyl2

#endif
