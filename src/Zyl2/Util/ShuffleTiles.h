#ifndef ZYL2_UTIL_SHUFFLETILES_H
#define ZYL2_UTIL_SHUFFLETILES_H

#include "Zyl2/Util/ShuffleInput.h"

#include <cstddef>

// Shuffling is a transposition of bytes: blocks of 16 rows and S bytes become S planes of 16 bytes.
// With the block's bytes taken as one sequence, whose positions are written in binary,
//
//     row r3 r2 r1 r0, byte s        ->        byte s, row r3 r2 r1 r0
//
// so the four bits of the row move from the front of the position to its end. Interleaving the two
// halves of the sequence byte by byte moves one bit:
//
//     a b c d e f | A B C D E F      ->        a A b B c C d D e E f F
//
// The "unpack" instructions interleave two vectors of 16 bytes. Two rounds of them need nothing but
// four vectors, a quarter of the block apart, and leave four vectors side by side:
//
//     quarters of the block                            after two rounds
//
//     | a . . | b . . | c . . | d . . |      ->        | a b c d | . . . . | . . . . |
//
// One such step moves the bits r3 r2, which is spreading; another one moves r1 r0, which is
// finishing and yields the four planes of a column. No width leaves a remainder.
//
// A vector of 32 bytes does that to two blocks at once: its lower half holds a vector of rows 0 to
// 15, its upper half that of rows 16 to 31, and so do the planes that come out.

namespace Zyl2Util {

constexpr std::size_t ShuffledValueSize = 4;

/// Columns that lie side by side, seen as rows of 16-byte vectors.
struct ShuffleSource
{
    unsigned char const* first; ///< the first value of the first row
    std::size_t rowSize;        ///< bytes from one row to the next
    std::size_t columns;
    /// Four rows hold as many vectors as there are columns. Whole rows are one run of them; of
    /// rows that are only taken in part, each is a run.
    std::size_t runs;
};

/// Where the four planes of a column begin.
struct ShufflePlanes
{
    unsigned char* first;
    std::size_t distance; ///< bytes from one plane to the next
};

/// The steps of shuffling that each instruction set has its own functions for.
struct ShuffleKernel
{
    std::size_t rowsPerBlock;
    /// Spreads blocks, one after the other, into an aligned buffer of the same size.
    void (*spread)(ShuffleSource const& source, std::size_t blocks, unsigned char* buffer);
    /// Finishes one column of spread blocks; the buffer's first vector is that of the column.
    void (*finish)(unsigned char const* buffer, std::size_t columns, std::size_t blocks,
                   ShufflePlanes planes);
    /// Spreads and finishes at once, for tables of a single column.
    void (*single)(unsigned char const* values, std::size_t blocks, ShufflePlanes planes);
};

enum class ShuffleStores
{
    Cached,
    Streamed, ///< past the caches, which spares reading the lines that are about to be overwritten
};

/// Planes of large arrays leave the caches before they are complete: these are streamed.
ShuffleStores StoresFor(std::size_t rows, std::size_t width);

/// Shuffles tile by tile.
/// \param rows   at least those of one block
/// \param stores arrays of few rows are never streamed
void ShuffleTiles(ShuffleKernel const& kernel, ShuffleInput const& input, std::size_t rows,
                  std::size_t width, void* destination, ShuffleStores stores);

} // namespace Zyl2Util

#endif
