#include "Zyl2/Wvf/Index.h"

#include <cstring>

namespace Zyl2Wvf {

void Index::Put(std::string const& key, void const* const& data, std::size_t size)
{
    unsigned char* const place = PutInPlace(key, size);
    if (size != 0)
        std::memcpy(place, data, size);
}

} // namespace Zyl2Wvf
