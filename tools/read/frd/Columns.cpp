// A line of fields, here a node's in the long format:
//
//   column  0  1  2 | 3 ... 12   | 13 ... 24    | 25 ... 36    | 37 ... 48
//           " -1"   | "       12" | " 1.00000E+00" "-2.50000E-01" " 0.00000E+00"

#include "Columns.h"

#include "Number.h"

namespace Frd {

bool isRecord(std::string_view line, std::string_view key)
{
    return line.substr(0, key.size()) == key;
}

bool isBareRecord(std::string_view line, std::string_view key)
{
    return isRecord(line, key) && trimmed(line.substr(key.size())).empty();
}

void checkCount(ByteStream const& stream, std::uint64_t found, std::uint64_t announced,
                char const* what)
{
    if (found < announced)
        stream.fail("The block announces " + std::to_string(announced) + " " + what +
                    " and holds " + std::to_string(found) + ".");
}

void warnOfMore(ByteStream& stream, std::uint64_t found, std::uint64_t announced, char const* what)
{
    stream.warn("A block announces " + std::to_string(announced) + " " + what + " and holds " +
                std::to_string(found) + "; all were kept.");
}

bool Columns::isBlank(std::size_t width) const
{
    return trimmed(rest_.substr(0, width)).empty();
}

std::string_view Columns::take(std::size_t width)
{
    std::string_view const field = rest_.substr(0, width);
    rest_.remove_prefix(field.size());
    return field;
}

void Columns::skip(std::size_t width)
{
    take(width);
}

std::string_view Columns::text(std::size_t width)
{
    return trimmed(take(width));
}

std::int64_t Columns::integer(std::size_t width, char const* name)
{
    std::string_view const field = text(width);
    auto const value = parseInteger(field);
    if (!value)
        stream_->fail("The " + std::string(name) + " \"" + std::string(field) +
                      "\" is not an integer.");
    return *value;
}

std::int32_t Columns::shortInteger(std::size_t width, char const* name)
{
    std::int64_t const value = integer(width, name);
    auto const narrowed = static_cast<std::int32_t>(value);
    if (narrowed != value)
        stream_->fail("The " + std::string(name) + " " + std::to_string(value) +
                      " does not fit in 32 bits.");
    return narrowed;
}

std::int64_t Columns::integerOrZero(std::size_t width, char const* name)
{
    if (!isBlank(width))
        return integer(width, name);
    skip(width);
    return 0;
}

double Columns::real(std::size_t width, char const* name)
{
    std::string_view const field = text(width);
    auto const value = parseReal(field);
    if (!value)
        stream_->fail("The " + std::string(name) + " \"" + std::string(field) +
                      "\" is not a number.");
    return *value;
}

void Columns::end() const
{
    std::string_view const extra = trimmed(rest_);
    if (!extra.empty())
        stream_->fail("Unexpected text \"" + std::string(extra.substr(0, 40)) +
                      "\" at the end of the line.");
}

} // namespace Frd
