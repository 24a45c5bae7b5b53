#ifndef READ_FRD_NUMBER_H
#define READ_FRD_NUMBER_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace Frd {

/// `text` without the blanks around it.
std::string_view trimmed(std::string_view text);

/// The integer that `text` holds between blanks, and nothing else.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// The real number that `text` holds between blanks, in any of the forms that Fortran writes:
/// 1.5, 1.5E-7, 1.5D-7, and 1.5-107 where the exponent left no room for its letter; also NaN and
/// Infinity. What is too small for a double is 0, what is too large is infinite.
std::optional<double> parseReal(std::string_view text);

} // namespace Frd

#endif
