#include "Zyl2/Util/ShuffleKernels.h"

#if defined(__x86_64__)

#include "Zyl2/Util/ShuffleTiles.h"

#include <emmintrin.h>

// Two rounds on four vectors of a block, whose bytes are numbered by row and byte in the row:
//
//     a  00 01 02 ..          b  40 41 42 ..          c  80 81 82 ..          d  C0 C1 C2 ..
//
//     a with c  00 80 01 81 02 82 ..                  b with d  40 C0 41 C1 42 C2 ..
//
//     all       00 40 80 C0 01 41 81 C1 02 42 82 C2 ..
//
// After two more rounds on vectors with the rows 0, 1, 2 and 3 in front:
//
//     plane 0   00 10 20 30 40 50 60 70 80 90 A0 B0 C0 D0 E0 F0        plane 1   01 11 21 31 ..

namespace Zyl2Util {

namespace {

constexpr std::size_t VectorSize = 16;

struct Quad
{
    __m128i a, b, c, d;
};

inline __m128i Load(unsigned char const* place)
{
    return _mm_loadu_si128(reinterpret_cast<__m128i const*>(place));
}

inline Quad LoadFour(unsigned char const* place, std::size_t distance)
{
    return {Load(place), Load(place + distance), Load(place + 2 * distance),
            Load(place + 3 * distance)};
}

inline void Store(unsigned char* place, __m128i const& vector)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(place), vector);
}

inline void StorePlanes(ShufflePlanes planes, std::size_t row, Quad const& quad)
{
    unsigned char* const place = planes.first + row;
    Store(place, quad.a);
    Store(place + planes.distance, quad.b);
    Store(place + planes.distance * 2, quad.c);
    Store(place + planes.distance * 3, quad.d);
}

inline Quad TwoRounds(Quad const& quad)
{
    __m128i const acLow = _mm_unpacklo_epi8(quad.a, quad.c);
    __m128i const acHigh = _mm_unpackhi_epi8(quad.a, quad.c);
    __m128i const bdLow = _mm_unpacklo_epi8(quad.b, quad.d);
    __m128i const bdHigh = _mm_unpackhi_epi8(quad.b, quad.d);
    return {_mm_unpacklo_epi8(acLow, bdLow), _mm_unpackhi_epi8(acLow, bdLow),
            _mm_unpacklo_epi8(acHigh, bdHigh), _mm_unpackhi_epi8(acHigh, bdHigh)};
}

unsigned char* SpreadRun(unsigned char const* values, std::size_t rowSize, std::size_t vectors,
                         unsigned char* buffer)
{
    unsigned char const* const end = values + vectors * VectorSize;
    for (; values != end; values += VectorSize, buffer += 4 * VectorSize)
        StorePlanes({buffer, VectorSize}, 0, TwoRounds(LoadFour(values, 4 * rowSize)));
    return buffer;
}

void Spread(ShuffleSource const& source, std::size_t blocks, unsigned char* buffer)
{
    std::size_t const vectors = source.columns / source.runs;
    unsigned char const* rows = source.first;
    for (std::size_t block = 0; block < blocks; ++block, rows += VectorSize * source.rowSize)
        for (std::size_t run = 0; run < source.runs; ++run)
            buffer = SpreadRun(rows + run * source.rowSize, source.rowSize, vectors, buffer);
}

void Finish(unsigned char const* buffer, std::size_t columns, std::size_t blocks,
            ShufflePlanes planes)
{
    std::size_t const quarter = columns * VectorSize;
    for (std::size_t block = 0; block < blocks; ++block, buffer += 4 * quarter)
        StorePlanes(planes, block * VectorSize, TwoRounds(LoadFour(buffer, quarter)));
}

void Single(unsigned char const* values, std::size_t blocks, ShufflePlanes planes)
{
    for (std::size_t block = 0; block < blocks; ++block, values += 4 * VectorSize)
        StorePlanes(planes, block * VectorSize, TwoRounds(TwoRounds(LoadFour(values, VectorSize))));
}

constexpr ShuffleKernel Kernel{VectorSize, Spread, Finish, Single};

} // namespace

void ShuffleSse2(ShuffleInput const& input, std::size_t rows, std::size_t width, void* destination)
{
    if (rows < Kernel.rowsPerBlock)
        ShufflePortable(input, rows, width, destination);
    else
        ShuffleTiles(Kernel, input, rows, width, destination, StoresFor(rows, width));
}

void ShuffleSse2Streamed(ShuffleInput const& input, std::size_t rows, std::size_t width,
                         void* destination)
{
    if (rows < Kernel.rowsPerBlock)
        ShufflePortable(input, rows, width, destination);
    else
        ShuffleTiles(Kernel, input, rows, width, destination, ShuffleStores::Streamed);
}

} // namespace Zyl2Util

#endif
