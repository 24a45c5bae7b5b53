// A dataset of r rows and w columns is stored column after column; and a column as four planes, one
// for each byte of its values, the lowest first:
//
//   | column 0: b0 of r values | b1 of r | b2 of r | b3 of r | column 1: b0 of r values | ...
//   0                          r         2r        3r        4r

#include "moxread/Dataset.h"

#include "moxread/LittleEndian.h"

#include <algorithm>
#include <iterator>

namespace MoxRead {

namespace {

std::uint32_t wordFromPlanes(std::uint8_t const* lowest, std::size_t planeSize)
{
    return std::uint32_t{lowest[0]} | std::uint32_t{lowest[planeSize]} << 8U |
           std::uint32_t{lowest[2 * planeSize]} << 16U |
           std::uint32_t{lowest[3 * planeSize]} << 24U;
}

} // namespace

Dataset Dataset::decode(Variable const& variable, std::uint8_t const* bytes)
{
    Dataset dataset;
    dataset.elementType = variable.elementType();
    dataset.width = variable.width;
    dataset.words.resize(variable.valueCount);
    std::size_t const rows = variable.rows();
    for (std::size_t column = 0; column < variable.width; ++column) {
        std::uint8_t const* const planes = bytes + column * 4 * rows;
        for (std::size_t row = 0; row < rows; ++row)
            dataset.words[row * variable.width + column] = wordFromPlanes(planes + row, rows);
    }
    return dataset;
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
