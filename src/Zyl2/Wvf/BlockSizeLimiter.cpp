#include "Zyl2/Wvf/BlockSizeLimiter.h"

#include "Zyl2/Wvf/DefaultBlockSize.h"

namespace Zyl2Wvf {

namespace {

std::uint32_t LimitFromEnvironment()
{
    auto const size = DefaultBlockSizeFromEnvironment();
    if (!size || *size > 4294967294U)
        return 209715200U;
    return static_cast<std::uint32_t>(*size);
}

} // namespace

BlockSizeLimiter::BlockSizeLimiter() : limit(LimitFromEnvironment()) {}

} // namespace Zyl2Wvf
