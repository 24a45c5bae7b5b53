#include "Number.h"

#include <charconv>
#include <limits>
#include <string>

namespace Frd {

namespace {

std::string_view withoutPlus(std::string_view text)
{
    bool const isSigned = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return isSigned ? text.substr(1) : text;
}

bool isDigitOrPoint(char c)
{
    return (c >= '0' && c <= '9') || c == '.';
}

bool startsExponent(std::string_view text, std::size_t i)
{
    char const c = text[i];
    if (c == 'E' || c == 'e' || c == 'D' || c == 'd')
        return true;
    return (c == '+' || c == '-') && i > 0;
}

/// from_chars knows one spelling of the exponent only: a lower-case e and a minus sign or none.
std::string withPlainExponent(std::string_view text)
{
    std::size_t i = !text.empty() && text[0] == '-' ? 1 : 0;
    while (i < text.size() && isDigitOrPoint(text[i]))
        ++i;
    if (i == text.size() || !startsExponent(text, i))
        return std::string(text);
    std::string_view exponent = text.substr(i);
    if (exponent[0] != '+' && exponent[0] != '-')
        exponent.remove_prefix(1);
    return std::string(text.substr(0, i)) + "e" + std::string(withoutPlus(exponent));
}

double outOfRange(std::string const& plain)
{
    bool const isTiny = plain.find("e-") != std::string::npos;
    double const magnitude = isTiny ? 0.0 : std::numeric_limits<double>::infinity();
    return plain[0] == '-' ? -magnitude : magnitude;
}

bool isParenthesised(std::string_view text)
{
    return text.find('(') != std::string_view::npos;
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    auto const first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::optional<std::int64_t> parseInteger(std::string_view text)
{
    std::string_view const digits = withoutPlus(trimmed(text));
    std::int64_t value = 0;
    auto const [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return value;
}

std::optional<double> parseReal(std::string_view text)
{
    std::string const plain = withPlainExponent(withoutPlus(trimmed(text)));
    if (isParenthesised(plain))
        return std::nullopt;
    double value = 0;
    auto const [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    if (end != plain.data() + plain.size() || error == std::errc::invalid_argument)
        return std::nullopt;
    return error == std::errc::result_out_of_range ? outOfRange(plain) : value;
}

} // namespace Frd
