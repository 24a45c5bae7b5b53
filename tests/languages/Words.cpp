#include "languages/Words.h"

#include <array>
#include <cstring>
#include <stdexcept>

namespace Languages {

namespace {

char const* const digits = "0123456789abcdef";

template <typename BitsT, typename T>
T fromBits(std::string const& word)
{
    auto const bits = static_cast<BitsT>(std::stoull(word, nullptr, 16));
    T value{};
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

template <typename BitsT, typename T>
std::string toBits(T value)
{
    BitsT bits{};
    std::memcpy(&bits, &value, sizeof bits);
    std::string word(2 * sizeof bits, '0');
    for (auto digit = word.rbegin(); digit != word.rend(); ++digit, bits >>= 4U)
        *digit = digits[bits & 0xFU];
    return word;
}

std::string decoded(std::string const& word)
{
    if (word.front() != 'x')
        throw std::runtime_error("no text: " + word);
    std::string text;
    for (std::size_t place = 1; place < word.size(); place += 2)
        text += static_cast<char>(std::stoi(word.substr(place, 2), nullptr, 16));
    return text;
}

} // namespace

std::string Words::word()
{
    std::string word;
    if (!(rest_ >> word))
        throw std::runtime_error("a line is too short: " + rest_.str());
    return word;
}

std::int64_t Words::number()
{
    return std::stoll(word());
}

float Words::float32()
{
    return fromBits<std::uint32_t, float>(word());
}

double Words::float64()
{
    return fromBits<std::uint64_t, double>(word());
}

std::string Words::text()
{
    return decoded(word());
}

std::optional<std::string> Words::optionalText()
{
    std::string const given = word();
    return given == "-" ? std::nullopt : std::make_optional(decoded(given));
}

Line& Line::word(std::string const& word)
{
    line_ += (line_.empty() ? "" : " ") + word;
    return *this;
}

Line& Line::float32(float value)
{
    return word(toBits<std::uint32_t>(value));
}

Line& Line::float64(double value)
{
    return word(toBits<std::uint64_t>(value));
}

Line& Line::text(std::string const& text)
{
    std::string encoded = "x";
    for (char const byte : text) {
        auto const value = static_cast<unsigned char>(byte);
        encoded += digits[value >> 4U];
        encoded += digits[value & 0xFU];
    }
    return word(encoded);
}

Line& Line::optionalText(std::optional<std::string> const& text)
{
    return text ? this->text(*text) : word("-");
}

} // namespace Languages
