#ifndef ZYL2_UTIL_ATTRIBUTEVALUE_H
#define ZYL2_UTIL_ATTRIBUTEVALUE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>

namespace Zyl2Util {

/// A tagged attribute value as the file knows it.
class AttributeValue
{
public:
    /// What `GetTag` gives, and what stands in the file.
    enum Tag : std::uint8_t
    {
        Integer = 0,
        Float = 1,
        Text = 2,
        Double = 3
    };

    /// Texts are held in 256 bytes: a longer one is cut there, and one with a zero byte at it.
    static constexpr std::size_t MaximumTextLength = 256;

    /// The integer 0.
    AttributeValue() = default;

    // Copies by assignment, because the copy constructor of libstdc++ 12's variant destroys a value
    // that it has not made yet when a text finds no memory.
    AttributeValue(AttributeValue const& other) : AttributeValue() { value_ = other.value_; }
    AttributeValue(AttributeValue&&) noexcept = default;
    AttributeValue& operator=(AttributeValue const&) = default;
    AttributeValue& operator=(AttributeValue&&) noexcept = default;
    ~AttributeValue() = default;

    static AttributeValue FromInteger(std::uint32_t value);
    static AttributeValue FromFloat(float value);
    static AttributeValue FromText(std::string const& value);
    static AttributeValue FromDouble(double value);

    Tag GetTag() const { return static_cast<Tag>(value_.index()); }

    /// Each of the next four may be called for a value of that tag only.
    std::uint32_t GetInteger() const { return std::get<Integer>(value_); }
    float GetFloat() const { return std::get<Float>(value_); }
    std::string const& GetText() const { return std::get<Text>(value_); }
    double GetDouble() const { return std::get<Double>(value_); }

    /// Whether this is a text and equals `text`.
    bool IsText(char const* text) const { return GetTag() == Text && GetText() == text; }

private:
    // The alternatives stand in the order of their tags.
    using Value = std::variant<std::uint32_t, float, std::string, double>;

    template <std::size_t tag, typename... ArgumentT>
    explicit AttributeValue(std::in_place_index_t<tag> place, ArgumentT&&... arguments)
        : value_(place, std::forward<ArgumentT>(arguments)...)
    {}

    Value value_ = std::uint32_t(0);
};

} // namespace Zyl2Util

#endif
