// Takes the place of LibdeflateEncoder.cpp where libdeflate was not found.

#include "Zyl2/Wvf/BlockEncoder.h"

namespace Zyl2Wvf {

BlockEncoder const* LibdeflateEncoder() noexcept
{
    return nullptr;
}

} // namespace Zyl2Wvf
