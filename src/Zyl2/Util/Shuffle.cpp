#include "Zyl2/Util/Shuffle.h"

namespace Zyl2Util {

namespace {

constexpr std::size_t ValueSize = 4;

void ShuffleColumn(unsigned char const* firstValue, std::size_t rows, std::size_t stride,
                   unsigned char* planes)
{
    unsigned char* const plane0 = planes;
    unsigned char* const plane1 = planes + rows;
    unsigned char* const plane2 = planes + rows * 2;
    unsigned char* const plane3 = planes + rows * 3;
    for (std::size_t row = 0; row < rows; ++row, firstValue += stride) {
        plane0[row] = firstValue[0];
        plane1[row] = firstValue[1];
        plane2[row] = firstValue[2];
        plane3[row] = firstValue[3];
    }
}

} // namespace

void ShuffleColumns(void const* values, std::size_t rows, std::size_t width, void* destination)
{
    auto const* const source = static_cast<unsigned char const*>(values);
    auto* const target = static_cast<unsigned char*>(destination);
    for (std::size_t column = 0; column < width; ++column)
        ShuffleColumn(source + column * ValueSize, rows, width * ValueSize,
                      target + column * rows * ValueSize);
}

template <typename T>
void ShuffleVectorBytes(std::vector<T>& values)
{
    ShuffleMultiVectorBytes(values, 1);
}

template <typename T>
void ShuffleMultiVectorBytes(std::vector<T>& values, unsigned char width)
{
    static_assert(sizeof(T) == ValueSize, "planes are made of 4-byte values");
    if (width == 0)
        return;
    std::vector<T> const source(values);
    ShuffleColumns(source.data(), source.size() / width, width, values.data());
}

template void ShuffleVectorBytes(std::vector<float>&);
template void ShuffleVectorBytes(std::vector<unsigned int>&);
template void ShuffleMultiVectorBytes(std::vector<float>&, unsigned char);
template void ShuffleMultiVectorBytes(std::vector<unsigned int>&, unsigned char);

} // namespace Zyl2Util
