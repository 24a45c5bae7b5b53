#ifndef ZYL2_MOX2_ARRAY2DIMPL_H
#define ZYL2_MOX2_ARRAY2DIMPL_H

#include <Zyl2/Mox2/Array2d.h>

#include "Zyl2/Util/Eigen.h"

namespace Zyl2 {
namespace Mox2 {

/// Storage of an `Array2d`.
template <typename T>
class Array2d<T>::Impl
{
public:
    using ArrayType = Eigen::Array<T, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

    Impl(int rows, int cols) : array(rows, cols) {}

    ArrayType array;
};

} // namespace Mox2
} // namespace Zyl2

#endif
