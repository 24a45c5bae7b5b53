#include "Zyl2/Util/ShuffleTiles.h"

#if defined(__x86_64__)

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <emmintrin.h>

// A tile is a few hundred rows of all columns, or of a group of them where rows are long:
//
//          columns ->                                    destination
//        +-------+-------+-----+                         |  first plane  | second plane  | ...
//      r | tile  | tile  | ..  |                         | t |   |       | t |   |       |
//      o +-------+-------+-----+      spread, finish       ^ a tile's part of each plane
//      w | tile  |             |      ------------->
//      s :
//
// Its spread blocks stay in the first cache, and each plane gets some whole cache lines at a time:
// planes that lie a power of two apart share few places in the cache, where lines that are written
// bit by bit would drive each other out.
//
// The last rows, if they fill no block, are shuffled in a block that begins earlier.
//
// Large planes are written past the caches, which takes whole lines. Tiles overlap by a line's
// worth of rows, so that each line is whole in some tile, wherever its plane begins:
//
//      tile  |------------------------|
//      tile                       |------------------------|
//      lines  . |   |   |   |   |   |   |   |   |   |   | .

namespace Zyl2Util {

namespace {

constexpr std::size_t CacheLine = 64;
constexpr std::size_t BufferSize = std::size_t(16) << 10U;
constexpr std::size_t MaxTileRows = 512;

struct Tile
{
    std::size_t firstRow;
    std::size_t rows;
};

void StreamLines(unsigned char* place, unsigned char const* bytes, std::size_t lines)
{
    auto* to = reinterpret_cast<__m128i*>(place);
    auto const* from = reinterpret_cast<__m128i const*>(bytes);
    for (std::size_t line = 0; line < lines; ++line, to += 4, from += 4) {
        _mm_stream_si128(to, _mm_loadu_si128(from));
        _mm_stream_si128(to + 1, _mm_loadu_si128(from + 1));
        _mm_stream_si128(to + 2, _mm_loadu_si128(from + 2));
        _mm_stream_si128(to + 3, _mm_loadu_si128(from + 3));
    }
}

struct Shape
{
    std::size_t columns; ///< those of whole rows, or a multiple of 4
    std::size_t rows;
};

// Groups of long rows' columns are a cache line wide.
Shape CachedShape(std::size_t width)
{
    std::size_t const columns = width <= 32 ? width : CacheLine / ShuffledValueSize;
    std::size_t const fitting = BufferSize / (columns * ShuffledValueSize);
    return {columns, std::min(MaxTileRows, fitting / CacheLine * CacheLine)};
}

// Tall tiles lose less to their overlap. Of long rows, flat groups of columns lose less to the
// number of planes that memory has to take at a time.
Shape StreamedShape(std::size_t width)
{
    return {width <= 8 ? width : 4, MaxTileRows};
}

class Tiles
{
public:
    Tiles(ShuffleKernel const& kernel, ShuffleInput const& input, std::size_t rows,
          std::size_t width, unsigned char* destination, ShuffleStores stores)
        : kernel_(kernel), input_(input), rows_(rows), width_(width), destination_(destination),
          streams_(stores == ShuffleStores::Streamed && rows >= MaxTileRows),
          shape_(streams_ ? StreamedShape(width) : CachedShape(width))
    {}

    void Shuffle()
    {
        if (streams_)
            ShuffleStreamed();
        else
            ShuffleCached();
    }

private:
    void ShuffleCached()
    {
        std::size_t const blockRows = rows_ / kernel_.rowsPerBlock * kernel_.rowsPerBlock;
        for (std::size_t row = 0; row < blockRows; row += shape_.rows)
            ShuffleTile({row, std::min(shape_.rows, blockRows - row)});
        if (blockRows != rows_)
            ShuffleTile({rows_ - kernel_.rowsPerBlock, kernel_.rowsPerBlock});
    }

    void ShuffleStreamed()
    {
        for (std::size_t row = 0; row + shape_.rows < rows_; row += shape_.rows - CacheLine)
            ShuffleTile({row, shape_.rows});
        ShuffleTile({rows_ - shape_.rows, shape_.rows});
        // Streamed lines become visible to other threads in no order of their own.
        _mm_sfence();
    }

    void ShuffleTile(Tile const& tile)
    {
        if (width_ == 1)
            ShuffleSingle(tile);
        else
            ShuffleGroups(tile);
    }

    void ShuffleSingle(Tile const& tile)
    {
        unsigned char const* const values = Source(tile, 0).first;
        WriteColumn(tile, 0,
                    [&](ShufflePlanes planes) { kernel_.single(values, BlocksOf(tile), planes); });
    }

    // The last group begins early enough to be as wide as the others; what it shares with the group
    // before is not finished again.
    void ShuffleGroups(Tile const& tile)
    {
        for (std::size_t column = 0; column < width_; column += shape_.columns) {
            std::size_t const first = std::min(column, width_ - shape_.columns);
            kernel_.spread(Source(tile, first), BlocksOf(tile), buffer_);
            for (std::size_t at = column - first; at < shape_.columns; ++at)
                FinishColumn(tile, first, at);
        }
    }

    void FinishColumn(Tile const& tile, std::size_t firstOfGroup, std::size_t column)
    {
        unsigned char const* const spread = buffer_ + column * kernel_.rowsPerBlock;
        WriteColumn(tile, firstOfGroup + column, [&](ShufflePlanes planes) {
            kernel_.finish(spread, shape_.columns, BlocksOf(tile), planes);
        });
    }

    template <typename Write>
    void WriteColumn(Tile const& tile, std::size_t column, Write const& write)
    {
        unsigned char* const place =
            destination_ + column * ShuffledValueSize * rows_ + tile.firstRow;
        if (!streams_) {
            write(ShufflePlanes{place, rows_});
            return;
        }
        write(ShufflePlanes{planes_, MaxTileRows});
        for (std::size_t plane = 0; plane < ShuffledValueSize; ++plane)
            Stream(tile, planes_ + plane * MaxTileRows, place + plane * rows_);
    }

    // What fills no line at an end of the tile is part of the neighbour's line.
    void Stream(Tile const& tile, unsigned char const* bytes, unsigned char* place) const
    {
        std::size_t const misaligned = reinterpret_cast<std::uintptr_t>(place) % CacheLine;
        std::size_t const head = (CacheLine - misaligned) % CacheLine;
        std::size_t const lines = (tile.rows - head) / CacheLine;
        std::size_t const tail = head + lines * CacheLine;
        StreamLines(place + head, bytes + head, lines);
        if (tile.firstRow == 0)
            std::memcpy(place, bytes, head);
        if (tile.firstRow + tile.rows == rows_)
            std::memcpy(place + tail, bytes + tail, tile.rows - tail);
    }

    ShuffleSource Source(Tile const& tile, std::size_t column)
    {
        if (input_.converter != nullptr) {
            input_.converter->Convert({tile.firstRow, tile.rows, column, shape_.columns},
                                      converted_);
            return {converted_, shape_.columns * ShuffledValueSize, shape_.columns, 1};
        }
        std::size_t const rowSize = width_ * ShuffledValueSize;
        std::size_t const runs = shape_.columns == width_ ? 1 : 4;
        return {input_.values + tile.firstRow * rowSize + column * ShuffledValueSize, rowSize,
                shape_.columns, runs};
    }

    std::size_t BlocksOf(Tile const& tile) const { return tile.rows / kernel_.rowsPerBlock; }

    ShuffleKernel const& kernel_;
    ShuffleInput const& input_;
    std::size_t const rows_;
    std::size_t const width_;
    unsigned char* const destination_;
    bool const streams_;
    Shape const shape_;
    alignas(CacheLine) unsigned char converted_[BufferSize];
    alignas(CacheLine) unsigned char buffer_[BufferSize];
    alignas(CacheLine) unsigned char planes_[ShuffledValueSize * MaxTileRows];
};

} // namespace

ShuffleStores StoresFor(std::size_t rows, std::size_t width)
{
    constexpr std::size_t StreamedSize = std::size_t(8) << 20U;
    return rows * width * ShuffledValueSize < StreamedSize ? ShuffleStores::Cached
                                                           : ShuffleStores::Streamed;
}

void ShuffleTiles(ShuffleKernel const& kernel, ShuffleInput const& input, std::size_t rows,
                  std::size_t width, void* destination, ShuffleStores stores)
{
    if (width == 0)
        return;
    Tiles(kernel, input, rows, width, static_cast<unsigned char*>(destination), stores).Shuffle();
}

} // namespace Zyl2Util

#endif
