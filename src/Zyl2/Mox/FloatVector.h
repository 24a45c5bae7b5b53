#ifndef ZYL2_MOX_FLOATVECTOR_H
#define ZYL2_MOX_FLOATVECTOR_H

#include "Zyl2/Exception/Raise.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace Zyl2Mox {

/// Refuses values that are fewer or more than a property takes.
/// \throws InvalidArguments "invalid array size", as from the site
inline void CheckSize(std::vector<float> const& values, std::size_t fewest, std::size_t most,
                      Zyl2::Exception::Site<Zyl2::Exception::InvalidArguments> const& site)
{
    if (values.size() < fewest || values.size() > most)
        Zyl2::Exception::raise(site);
}

/// Copies the first `count` values; the rest of the target keeps its values.
template <std::size_t Size>
void CopyFirst(std::size_t count, std::vector<float> const& values, std::array<float, Size>& target)
{
    std::copy_n(values.begin(), count, target.begin());
}

} // namespace Zyl2Mox

#endif
