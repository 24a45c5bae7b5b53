#ifndef MOXREAD_DATASET_H
#define MOXREAD_DATASET_H

#include "moxread/Export.h"
#include "moxread/Variable.h"

#include <cstdint>
#include <vector>

namespace MoxRead {

/// The values of a dataset, in rows.
struct MOXREAD_EXPORT Dataset
{
    ElementType elementType = ElementType::Float;
    std::uint8_t width = 0;
    /// The values as 32-bit words, row after row.
    std::vector<std::uint32_t> words;

    /// Undoes the shuffling that the values are stored with.
    static Dataset decode(Variable const& variable, std::uint8_t const* bytes);

    /// The same, in the memory of the values that were there before.
    void take(Variable const& variable, std::uint8_t const* bytes);

    std::size_t rows() const;
    /// The words taken as floats. Meant for datasets of that element type.
    std::vector<float> floats() const;
};

} // namespace MoxRead

#endif
