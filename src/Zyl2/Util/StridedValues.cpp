#include "Zyl2/Util/StridedValues.h"

#include "Zyl2/Util/Shuffle.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

// Some rows at a time become 4-byte values in row order, then byte planes; each of their planes is
// then a piece of the dataset's:
//
//     host's values          converted            shuffled            destination
//     | rows x width |  ->  | x0 y0 x1 y1 |  ->  | x. | y. |  ->  | .. x. .... | .. y. .... |
//
// Both intermediate pieces stay in the first caches. Values that are what is stored, in row order,
// need neither.

namespace Zyl2Util {

namespace {

using Element = StridedValues::Element;
constexpr std::size_t StoredSize = 4;
constexpr std::size_t PieceSize = 2048;

template <typename From>
using Stored = std::conditional_t<std::is_floating_point_v<From>, float, std::uint32_t>;

template <typename From>
From Load(unsigned char const* place)
{
    // A host's strides may put values anywhere.
    From value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

/// Calls `function` with a value of the type that the elements have.
template <typename Function>
auto WithElement(Element element, Function const& function)
{
    // NOLINTNEXTLINE(bugprone-branch-clone): the branches differ in the type that they hand over
    switch (element) {
    case Element::Float:
        return function(float());
    case Element::Double:
        return function(double());
    case Element::Int32:
        return function(std::int32_t());
    case Element::UnsignedInt32:
        return function(std::uint32_t());
    case Element::Int64:
        return function(std::int64_t());
    case Element::UnsignedInt64:
        break;
    }
    return function(std::uint64_t());
}

unsigned char const* PlaceOf(StridedValues const& values, std::size_t row, std::size_t column)
{
    return values.first + static_cast<std::ptrdiff_t>(row) * values.rowStride +
           static_cast<std::ptrdiff_t>(column) * values.columnStride;
}

/// Whether the values lie one behind the other in row order.
bool AreContiguous(StridedValues const& values, std::size_t elementSize)
{
    auto const size = static_cast<std::ptrdiff_t>(elementSize);
    return (values.width == 1 || values.columnStride == size) &&
           values.rowStride == static_cast<std::ptrdiff_t>(values.width) * size;
}

template <typename From>
bool Fits(From value)
{
    if constexpr (std::is_same_v<From, double>) {
        // Halfway between the largest float and the next that there would be: rounded up from here.
        constexpr double FirstInfinite = 0x1.ffffffp127;
        double const magnitude = std::fabs(value);
        return !(magnitude >= FirstInfinite && magnitude <= std::numeric_limits<double>::max());
    } else if constexpr (std::is_same_v<From, std::int32_t>) {
        return value >= 0;
    } else if constexpr (sizeof(From) > StoredSize) {
        return static_cast<std::uint64_t>(value) <= std::numeric_limits<std::uint32_t>::max();
    } else {
        return true;
    }
}

template <typename From>
std::string InDigits(From value)
{
    std::array<char, 32> digits{};
    auto const written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), written.ptr};
}

template <typename From>
std::optional<Misfit> FindMisfitAmong(StridedValues const& values)
{
    for (std::size_t row = 0; row < values.rows; ++row) {
        unsigned char const* place = PlaceOf(values, row, 0);
        for (std::size_t column = 0; column < values.width; ++column, place += values.columnStride)
            if (auto const value = Load<From>(place); !Fits(value))
                return Misfit{row, column, InDigits(value)};
    }
    return std::nullopt;
}

template <typename From>
void ConvertRun(unsigned char const* from, std::size_t count, std::ptrdiff_t fromStride,
                unsigned char* to, std::size_t toStride)
{
    for (std::size_t at = 0; at < count; ++at, from += fromStride, to += toStride) {
        auto const value = static_cast<Stored<From>>(Load<From>(from));
        std::memcpy(to, &value, StoredSize);
    }
}

/// Writes some rows as 4-byte values in row order.
template <typename From>
void Convert(StridedValues const& values, std::size_t firstRow, std::size_t rows, unsigned char* to)
{
    if (AreContiguous(values, sizeof(From))) {
        ConvertRun<From>(PlaceOf(values, firstRow, 0), rows * values.width, sizeof(From), to,
                         StoredSize);
        return;
    }
    for (std::size_t column = 0; column < values.width; ++column)
        ConvertRun<From>(PlaceOf(values, firstRow, column), rows, values.rowStride,
                         to + column * StoredSize, values.width * StoredSize);
}

class Pieces
{
public:
    /// \param firstRow of the values among those of the destination, which has `allRows`
    Pieces(StridedValues const& values, std::size_t firstRow, std::size_t allRows,
           unsigned char* destination)
        : values_(values), allRows_(allRows), destination_(destination + firstRow)
    {}

    template <typename From>
    void Shuffle()
    {
        std::size_t const rowsAtATime = PieceSize / values_.width;
        for (std::size_t row = 0; row < values_.rows; row += rowsAtATime) {
            std::size_t const rows = std::min(rowsAtATime, values_.rows - row);
            Convert<From>(values_, row, rows, converted_.data());
            ShuffleColumns(converted_.data(), rows, values_.width, shuffled_.data());
            CopyPlanes(row, rows);
        }
    }

private:
    void CopyPlanes(std::size_t firstRow, std::size_t rows)
    {
        std::size_t const planes = values_.width * StoredSize;
        for (std::size_t plane = 0; plane < planes; ++plane)
            std::memcpy(destination_ + plane * allRows_ + firstRow, shuffled_.data() + plane * rows,
                        rows);
    }

    StridedValues const& values_;
    std::size_t const allRows_;
    unsigned char* const destination_;
    alignas(64) std::array<unsigned char, PieceSize * StoredSize> converted_;
    alignas(64) std::array<unsigned char, PieceSize * StoredSize> shuffled_;
};

/// Integers that are not negative look alike with and without a sign.
bool AreStoredAsTheyAre(StridedValues const& values)
{
    bool const isStoredType = values.element == Element::Float ||
                              values.element == Element::Int32 ||
                              values.element == Element::UnsignedInt32;
    return isStoredType && AreContiguous(values, StoredSize);
}

} // namespace

bool AreStoredAsFloats(StridedValues const& values)
{
    return values.element == Element::Float || values.element == Element::Double;
}

std::optional<Misfit> FindMisfit(StridedValues const& values)
{
    if (values.element == Element::Float || values.element == Element::UnsignedInt32)
        return std::nullopt;
    return WithElement(values.element,
                       [&](auto type) { return FindMisfitAmong<decltype(type)>(values); });
}

void ShuffleStrided(StridedValues const& values, void* destination)
{
    if (values.rows == 0 || values.width == 0)
        return;
    if (AreStoredAsTheyAre(values))
        return ShuffleColumns(values.first, values.rows, values.width, destination);
    ShufflePiece(values, 0, values.rows, destination);
}

void ShufflePiece(StridedValues const& piece, std::size_t firstRow, std::size_t rows,
                  void* destination)
{
    if (piece.rows == 0 || piece.width == 0)
        return;
    Pieces pieces(piece, firstRow, rows, static_cast<unsigned char*>(destination));
    WithElement(piece.element, [&](auto type) { pieces.Shuffle<decltype(type)>(); });
}

} // namespace Zyl2Util
