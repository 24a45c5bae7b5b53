#include "Zyl2/Wvf/FastDeflate.h"

namespace Zyl2Wvf {

char const* DeflateEncoderName() noexcept
{
    return "zlib";
}

std::optional<std::size_t> FastDeflate(unsigned char const* /*source*/, std::size_t /*length*/,
                                       unsigned char* /*destination*/, std::size_t /*capacity*/,
                                       int /*level*/) noexcept
{
    return std::nullopt;
}

} // namespace Zyl2Wvf
