#include "Zyl2/Util/ShuffleKernels.h"

#if defined(__x86_64__)

#include "Zyl2/Util/ShuffleTiles.h"

#include <immintrin.h>

// Two rounds on four vectors of two blocks, whose bytes are numbered by block and row:
//
//     a  00 .. | 1G ..        b  04 .. | 1K ..        c  08 .. | 1O ..        d  0C .. | 1S ..
//
//     a  00 08 .. | 1G 1O ..                          b  04 0C .. | 1K 1S ..        and the rest
//
//     a  00 04 08 0C .. | 1G 1K 1O 1S ..              and the rest
//
// Digits beyond 9 go on with letters; "|" parts the halves, which "unpack" never mixes.

namespace Zyl2Util {

namespace {

constexpr std::size_t VectorSize = 32;
constexpr std::size_t HalfSize = 16;

struct Quad
{
    __m256i a, b, c, d;
};

[[gnu::target("avx2")]] inline __m256i LoadHalves(unsigned char const* lower, std::size_t distance)
{
    auto const* const upper = lower + distance;
    __m128i const low = _mm_loadu_si128(reinterpret_cast<__m128i const*>(lower));
    __m128i const high = _mm_loadu_si128(reinterpret_cast<__m128i const*>(upper));
    return _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
}

[[gnu::target("avx2")]] inline Quad LoadQuarters(unsigned char const* values, std::size_t rowSize)
{
    std::size_t const quarter = 4 * rowSize;
    std::size_t const block = 16 * rowSize;
    return {LoadHalves(values, block), LoadHalves(values + quarter, block),
            LoadHalves(values + 2 * quarter, block), LoadHalves(values + 3 * quarter, block)};
}

[[gnu::target("avx2")]] inline void Store(unsigned char* place, __m256i const& vector)
{
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(place), vector);
}

[[gnu::target("avx2")]] inline void StorePlanes(ShufflePlanes planes, std::size_t row,
                                                Quad const& quad)
{
    unsigned char* const place = planes.first + row;
    Store(place, quad.a);
    Store(place + planes.distance, quad.b);
    Store(place + planes.distance * 2, quad.c);
    Store(place + planes.distance * 3, quad.d);
}

[[gnu::target("avx2")]] inline Quad TwoRounds(Quad const& quad)
{
    __m256i const acLow = _mm256_unpacklo_epi8(quad.a, quad.c);
    __m256i const acHigh = _mm256_unpackhi_epi8(quad.a, quad.c);
    __m256i const bdLow = _mm256_unpacklo_epi8(quad.b, quad.d);
    __m256i const bdHigh = _mm256_unpackhi_epi8(quad.b, quad.d);
    return {_mm256_unpacklo_epi8(acLow, bdLow), _mm256_unpackhi_epi8(acLow, bdLow),
            _mm256_unpacklo_epi8(acHigh, bdHigh), _mm256_unpackhi_epi8(acHigh, bdHigh)};
}

[[gnu::target("avx2")]] unsigned char* SpreadRun(unsigned char const* values, std::size_t rowSize,
                                                 std::size_t vectors, unsigned char* buffer)
{
    unsigned char const* const end = values + vectors * HalfSize;
    for (; values != end; values += HalfSize, buffer += 4 * VectorSize)
        StorePlanes({buffer, VectorSize}, 0, TwoRounds(LoadQuarters(values, rowSize)));
    return buffer;
}

[[gnu::target("avx2")]] void Spread(ShuffleSource const& source, std::size_t blocks,
                                    unsigned char* buffer)
{
    std::size_t const vectors = source.columns / source.runs;
    unsigned char const* rows = source.first;
    for (std::size_t block = 0; block < blocks; ++block, rows += VectorSize * source.rowSize)
        for (std::size_t run = 0; run < source.runs; ++run)
            buffer = SpreadRun(rows + run * source.rowSize, source.rowSize, vectors, buffer);
}

[[gnu::target("avx2")]] void Finish(unsigned char const* buffer, std::size_t columns,
                                    std::size_t blocks, ShufflePlanes planes)
{
    auto const* vector = reinterpret_cast<__m256i const*>(buffer);
    for (std::size_t block = 0; block < blocks; ++block, vector += 4 * columns) {
        Quad const quad{_mm256_load_si256(vector), _mm256_load_si256(vector + columns),
                        _mm256_load_si256(vector + 2 * columns),
                        _mm256_load_si256(vector + 3 * columns)};
        StorePlanes(planes, block * VectorSize, TwoRounds(quad));
    }
}

[[gnu::target("avx2")]] void Single(unsigned char const* values, std::size_t blocks,
                                    ShufflePlanes planes)
{
    for (std::size_t block = 0; block < blocks; ++block, values += 4 * VectorSize)
        StorePlanes(planes, block * VectorSize,
                    TwoRounds(TwoRounds(LoadQuarters(values, ShuffledValueSize))));
}

constexpr ShuffleKernel Kernel{VectorSize, Spread, Finish, Single};

} // namespace

bool CpuHasAvx2()
{
    return __builtin_cpu_supports("avx2") != 0;
}

void ShuffleAvx2(ShuffleInput const& input, std::size_t rows, std::size_t width, void* destination)
{
    if (rows < Kernel.rowsPerBlock)
        ShuffleSse2(input, rows, width, destination);
    else
        ShuffleTiles(Kernel, input, rows, width, destination, StoresFor(rows, width));
}

void ShuffleAvx2Streamed(ShuffleInput const& input, std::size_t rows, std::size_t width,
                         void* destination)
{
    if (rows < Kernel.rowsPerBlock)
        ShuffleSse2Streamed(input, rows, width, destination);
    else
        ShuffleTiles(Kernel, input, rows, width, destination, ShuffleStores::Streamed);
}

} // namespace Zyl2Util

#endif
