#ifndef ZYL2_MOX_SHUFFLEDVALUES_H
#define ZYL2_MOX_SHUFFLEDVALUES_H

#include <cstddef>

namespace Zyl2Mox {

/// Values of 4 bytes as they stand in the heavy data, which somebody else holds.
struct ShuffledValues
{
    unsigned char const* data = nullptr;
    std::size_t rows = 0;
    std::size_t width = 1;
};

} // namespace Zyl2Mox

#endif
