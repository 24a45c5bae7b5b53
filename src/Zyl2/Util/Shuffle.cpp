#include "Zyl2/Util/Shuffle.h"
#include "Zyl2/Util/ShuffleKernels.h"

namespace Zyl2Util {

namespace {

ShuffleFunction* FastestShuffle()
{
#if defined(__x86_64__)
    return CpuHasAvx2() ? ShuffleAvx2 : ShuffleSse2;
#else
    return ShufflePortable;
#endif
}

} // namespace

void ShuffleColumns(ShuffleInput const& input, std::size_t rows, std::size_t width,
                    void* destination)
{
    FastestShuffle()(input, rows, width, destination);
}

template <typename T>
void ShuffleVectorBytes(std::vector<T>& values)
{
    ShuffleMultiVectorBytes(values, 1);
}

template <typename T>
void ShuffleMultiVectorBytes(std::vector<T>& values, unsigned char width)
{
    static_assert(sizeof(T) == 4, "planes are made of 4-byte values");
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
