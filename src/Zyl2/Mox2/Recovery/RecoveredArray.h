#ifndef ZYL2_MOX2_RECOVERY_RECOVEREDARRAY_H
#define ZYL2_MOX2_RECOVERY_RECOVEREDARRAY_H

#include "Zyl2/Mox/NumericArray.h"
#include "Zyl2/Mox/ShuffledValues.h"

#include <cstddef>
#include <cstdint>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

/// Values that a run had put into a block, as they stand there.
class RecoveredArray
{
public:
    /// No rows.
    RecoveredArray() = default;
    RecoveredArray(unsigned char const* data, std::int64_t rows, std::int64_t columns,
                   Zyl2Mox::ElementCode element)
        : data_(data), rows_(rows), columns_(columns), element_(element)
    {}

    /// The same without values: they are elsewhere, in a block that is not to be written.
    /// \param position that they have in the stream of all values
    RecoveredArray at(std::uint64_t position) const
    {
        RecoveredArray array = *this;
        array.isElsewhere_ = true;
        array.position_ = position;
        return array;
    }
    bool isElsewhere() const { return isElsewhere_; }
    std::uint64_t position() const { return position_; }

    unsigned char const* data() const { return data_; }
    std::int64_t rows() const { return rows_; }
    std::int64_t columns() const { return columns_; }
    Zyl2Mox::ElementCode element() const { return element_; }

    Zyl2Mox::ShuffledValues values() const
    {
        return {data_, static_cast<std::size_t>(rows_), static_cast<std::size_t>(columns_)};
    }

private:
    unsigned char const* data_ = nullptr;
    std::int64_t rows_ = 0;
    std::int64_t columns_ = 1;
    Zyl2Mox::ElementCode element_ = Zyl2Mox::ElementCode::None;
    bool isElsewhere_ = false;
    std::uint64_t position_ = 0;
};

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2

#endif
