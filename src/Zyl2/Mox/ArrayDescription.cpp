#include "Zyl2/Mox/ArrayDescription.h"

namespace Zyl2Mox {

ArrayDescription Describe(NumericArray const& array)
{
    ArrayDescription description;
    description.kind = array.GetElementCode();
    description.valueCount = static_cast<std::int32_t>(array.GetNumElements());
    description.width = array.GetWidth();
    return description;
}

} // namespace Zyl2Mox
