#ifndef ZYL2_MOX2_ARRAY1DIMPL_H
#define ZYL2_MOX2_ARRAY1DIMPL_H

#include <Zyl2/Mox2/Array1d.h>

#include "Zyl2/Util/Eigen.h"

namespace Zyl2 {
namespace Mox2 {

/// Storage of an `Array1d`.
template <typename T>
class Array1d<T>::Impl
{
public:
    using ArrayType = Eigen::Array<T, Eigen::Dynamic, 1>;

    explicit Impl(int size) : array(size) {}

    ArrayType array;
};

} // namespace Mox2
} // namespace Zyl2

#endif
