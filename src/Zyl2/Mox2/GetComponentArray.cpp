#include "Zyl2/Mox2/GetComponentArray.h"

namespace Zyl2 {
namespace Mox2 {

template <>
ComponentArray const& getComponentArray(Array1d<unsigned int> const& given)
{
    return given.impl().array;
}

template <>
ComponentArray const& getComponentArray(unsigned int const& given)
{
    thread_local ComponentArray single(1);
    single(0) = given;
    return single;
}

} // namespace Mox2
} // namespace Zyl2
