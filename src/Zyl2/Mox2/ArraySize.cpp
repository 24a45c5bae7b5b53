#include "Zyl2/Mox2/ArraySize.h"

#include <limits>
#include <new>

namespace Zyl2 {
namespace Mox2 {

int arraySize(unsigned long size)
{
    if (size > static_cast<unsigned long>(std::numeric_limits<int>::max()))
        throw std::bad_alloc();
    return static_cast<int>(size);
}

} // namespace Mox2
} // namespace Zyl2
