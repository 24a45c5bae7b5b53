#ifndef ZYL2_MOX2_GETCOMPONENTARRAY_H
#define ZYL2_MOX2_GETCOMPONENTARRAY_H

#include "Zyl2/Mox2/Array1dImpl.h"

namespace Zyl2 {
namespace Mox2 {

/// Ids as commands hold them.
using ComponentArray = Array1d<unsigned int>::Impl::ArrayType;

/// The ids that a host gave.
template <typename ComponentT>
ComponentArray const& getComponentArray(ComponentT const& given);

template <>
ComponentArray const& getComponentArray(Array1d<unsigned int> const& given);

/// One array of each thread serves all its single ids: consume it before the next call.
template <>
ComponentArray const& getComponentArray(unsigned int const& given);

} // namespace Mox2
} // namespace Zyl2

#endif
