#ifndef ZYL2_UTIL_SHUFFLEINPUT_H
#define ZYL2_UTIL_SHUFFLEINPUT_H

#include <cstddef>

namespace Zyl2Util {

/// Some rows of some columns of a table.
struct TablePart
{
    std::size_t firstRow;
    std::size_t rows;
    std::size_t firstColumn;
    std::size_t columns;
};

/// Makes 4-byte values of what lies elsewhere in another form.
class ValueConverter
{
public:
    ValueConverter() = default;
    ValueConverter(ValueConverter const&) = delete;
    ValueConverter& operator=(ValueConverter const&) = delete;

    /// Converts a part of the table. The parts of several calls may overlap.
    /// \param to the part's rows x columns x 4 bytes, which get its values in row order
    virtual void Convert(TablePart const& part, unsigned char* to) = 0;

protected:
    ~ValueConverter() = default;
};

/// The table of 4-byte values that is shuffled: one that is there, in row order, or one whose
/// values are converted piece by piece, on their way.
struct ShuffleInput
{
    ShuffleInput(void const* table) : values(static_cast<unsigned char const*>(table)) {}
    ShuffleInput(ValueConverter& source) : converter(&source) {}

    unsigned char const* values = nullptr;
    /// Makes the values where they have to be converted; null where `values` are there.
    ValueConverter* converter = nullptr;
};

} // namespace Zyl2Util

#endif
