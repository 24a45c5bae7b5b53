// A dataset of r rows and w columns is stored column after column; and a column as four planes, one
// for each byte of its values, the lowest first:
//
//   | column 0: b0 of r values | b1 of r | b2 of r | b3 of r | column 1: b0 of r values | ...
//   0                          r         2r        3r        4r

#include "moxread/Dataset.h"

#include "moxread/LargePages.h"
#include "moxread/LittleEndian.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

namespace MoxRead {

namespace {

// A tile of so many values fits into the fastest cache twice, by columns and by rows.
constexpr std::size_t tileSize = 2048;

bool isLittleEndian()
{
    std::uint32_t const one = 1;
    std::uint8_t lowest = 0;
    std::memcpy(&lowest, &one, sizeof lowest);
    return lowest == 1;
}

// The values whose lowest bytes begin there. Compilers make better vector code of bytes that are
// put side by side than of shifts.
void joinPlanes(std::uint8_t const* lowest, std::size_t planeSize, std::uint32_t* values,
                std::size_t count)
{
    std::array<std::uint8_t const*, 4> planes = {lowest, lowest + planeSize, lowest + 2 * planeSize,
                                                 lowest + 3 * planeSize};
    if (!isLittleEndian())
        std::reverse(planes.begin(), planes.end());
    auto* const bytes = reinterpret_cast<std::uint8_t*>(values);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[4 * i] = planes[0][i];
        bytes[4 * i + 1] = planes[1][i];
        bytes[4 * i + 2] = planes[2][i];
        bytes[4 * i + 3] = planes[3][i];
    }
}

// Tile by tile, so that rows are put together while they are in the cache. They are put behind
// those that there are: to make the words longer first would set all of them to zero.
template <std::size_t width>
void joinRows(std::uint8_t const* bytes, std::size_t rows, std::vector<std::uint32_t>& words)
{
    constexpr std::size_t tileRows = tileSize / width;
    std::array<std::array<std::uint32_t, tileRows>, width> columns;
    std::array<std::uint32_t, tileRows * width> tile;
    for (std::size_t first = 0; first < rows; first += tileRows) {
        std::size_t const count = std::min(tileRows, rows - first);
        for (std::size_t column = 0; column < width; ++column)
            joinPlanes(bytes + column * 4 * rows + first, rows, columns[column].data(), count);
        for (std::size_t row = 0; row < count; ++row)
            for (std::size_t column = 0; column < width; ++column)
                tile[row * width + column] = columns[column][row];
        words.insert(words.end(), tile.data(), tile.data() + count * width);
    }
}

void makeRoom(std::vector<std::uint32_t>& words, std::size_t count)
{
    words.clear();
    if (count <= words.capacity())
        return;
    // The old memory goes first, so that the two are never held at the same time.
    words = std::vector<std::uint32_t>();
    words.reserve(count);
    wishForLargePages(words.data(), count * sizeof(std::uint32_t));
}

} // namespace

Dataset Dataset::decode(Variable const& variable, std::uint8_t const* bytes)
{
    Dataset dataset;
    dataset.take(variable, bytes);
    return dataset;
}

void Dataset::take(Variable const& variable, std::uint8_t const* bytes)
{
    elementType = variable.elementType();
    width = variable.width;
    makeRoom(words, variable.valueCount);
    if (width == 1)
        joinRows<1>(bytes, variable.rows(), words);
    else if (width == 3)
        joinRows<3>(bytes, variable.rows(), words);
    else
        joinRows<6>(bytes, variable.rows(), words);
}

std::size_t Dataset::rows() const
{
    return width == 0 ? 0 : words.size() / width;
}

std::vector<float> Dataset::floats() const
{
    std::vector<float> values;
    values.reserve(words.size());
    std::transform(words.begin(), words.end(), std::back_inserter(values), floatFromBits);
    return values;
}

} // namespace MoxRead
