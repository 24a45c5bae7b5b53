#ifndef MOX_PRINT_VALUETEXT_H
#define MOX_PRINT_VALUETEXT_H

#include "moxread/Dataset.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace Mox {

/// The shortest text from which the number can be recovered exactly.
std::string textOf(float value);
std::string textOf(double value);

/// A number in as many digits as people read: six at most.
std::string roundedTextOf(double value);

/// The numbers of a sequence, separated by blanks.
template <typename Iterator>
std::string textOf(Iterator begin, Iterator end)
{
    std::string text;
    for (Iterator it = begin; it != end; ++it)
        text += (it == begin ? "" : " ") + textOf(*it);
    return text;
}

/// An attribute's value; numbers tell their type, unless they are integers, and texts are quoted.
std::string textOf(MoxRead::AttributeValue const& value);

/// A value of a dataset, which holds floats or unsigned integers.
double numberOf(std::uint32_t word, bool isFloat);

/// The least and the greatest value of a dataset.
struct ValueRange
{
    bool isFloat = true;
    std::size_t count = 0;
    std::size_t notNumbers = 0;
    /// The least and the greatest of the values that are numbers, floats or uint32s: a double holds
    /// each of them exactly.
    double least = 0;
    double greatest = 0;

    static ValueRange of(MoxRead::Dataset const& dataset);

    bool hasNumbers() const { return notNumbers < count; }

    /// Such as "range 0..2.5", "range 0..2.5 and 3 NaN", "all NaN" or "empty".
    std::string text() const;
};

} // namespace Mox

#endif
