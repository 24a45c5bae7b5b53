#include "Zyl2/Mox/NumericArray.h"

namespace Zyl2Mox {

NumericArray::NumericArray(void const* data, std::size_t byteCount, std::uint8_t width,
                           ElementCode element)
    : data_(data), byteCount_(byteCount), width_(width), element_(element)
{}

std::uint8_t NumericArray::GetWidth() const
{
    return width_;
}

std::size_t NumericArray::GetNumElements() const
{
    constexpr std::size_t valueSize = 4;
    return byteCount_ / valueSize;
}

} // namespace Zyl2Mox
