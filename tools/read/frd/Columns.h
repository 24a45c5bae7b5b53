#ifndef READ_FRD_COLUMNS_H
#define READ_FRD_COLUMNS_H

#include "ByteStream.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Frd {

/// Whether the line is the record of that key (" -1") and, for a key without fields, nothing else.
bool isRecord(std::string_view line, std::string_view key);
bool isBareRecord(std::string_view line, std::string_view key);

/// Refuses a block that holds fewer `what` ("nodes") than it announces.
void checkCount(ByteStream const& stream, std::uint64_t found, std::uint64_t announced,
                char const* what);

/// Warns of a block that holds more `what` ("nodes") than it announces.
void warnOfMore(ByteStream& stream, std::uint64_t found, std::uint64_t announced, char const* what);

/// The fields of one line, taken from left to right. They have fixed widths and may touch each
/// other, so that nothing but the columns tells where one ends.
class Columns
{
public:
    /// How wide a real number is.
    static constexpr std::size_t realWidth = 12;

    /// The line must have been taken from `stream` last: messages give its place.
    Columns(ByteStream const& stream, std::string_view line) : stream_(&stream), rest_(line) {}

    void skip(std::size_t width);

    /// The field without the blanks around it.
    std::string_view text(std::size_t width);

    /// The integer in the field; `name` ("node number") tells in messages what it is.
    std::int64_t integer(std::size_t width, char const* name);

    /// The integer in the field, which must fit into 32 bits.
    std::int32_t shortInteger(std::size_t width, char const* name);

    /// The integer in the field, or 0 in a blank one: writers leave trailing zeros away.
    std::int64_t integerOrZero(std::size_t width, char const* name);

    /// Whether the field is blank; takes nothing.
    bool isBlank(std::size_t width) const;

    /// What is left of the line; takes nothing.
    std::string_view rest() const { return rest_; }

    double real(std::size_t width, char const* name);

    /// Refuses anything but blanks in what is left.
    void end() const;

private:
    std::string_view take(std::size_t width);

    ByteStream const* stream_;
    std::string_view rest_;
};

} // namespace Frd

#endif
