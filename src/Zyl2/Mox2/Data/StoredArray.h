#ifndef ZYL2_MOX2_DATA_STOREDARRAY_H
#define ZYL2_MOX2_DATA_STOREDARRAY_H

#include "Zyl2/Util/Eigen.h"

#include <cstddef>

namespace Zyl2 {
namespace Data {

/// Values of an array that somebody else holds, in row order.
template <typename ArrayT>
class StoredArray
{
public:
    using Scalar = typename ArrayT::Scalar;

    /// No rows.
    StoredArray() = default;

    /// Looks at `array`, which must stay alive and keep its size.
    // NOLINTNEXTLINE(google-explicit-constructor): an array is looked at as it is
    StoredArray(ArrayT const& array) : data_(array.data()), rows_(array.rows()), cols_(array.cols())
    {}

    Scalar const* data() const { return data_; }
    std::ptrdiff_t rows() const { return rows_; }
    std::ptrdiff_t cols() const { return cols_; }

private:
    Scalar const* data_ = nullptr;
    std::ptrdiff_t rows_ = 0;
    std::ptrdiff_t cols_ = 1;
};

} // namespace Data
} // namespace Zyl2

#endif
