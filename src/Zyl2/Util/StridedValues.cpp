#include "Zyl2/Util/StridedValues.h"

#include "Zyl2/Util/Shuffle.h"
#include "Zyl2/Util/ShuffleKernels.h"
#include "Zyl2/Util/StridedElements.h"
#include "Zyl2/Util/Verdict.h"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <vector>

// Where the host's values are what is stored, in row order, they are shuffled as they are. Others
// become that some rows at a time, which stay in the first cache until they are byte planes. They
// are judged in the same pass: memory takes longer to give them than all of that does.

namespace Zyl2Util {

namespace {

constexpr std::size_t StoredSize = 4;

/// \return the run's verdict
template <typename From>
[[gnu::always_inline]] inline Verdict<From> ConvertRun(unsigned char const* from, std::size_t count,
                                                       std::ptrdiff_t fromStride, unsigned char* to,
                                                       std::size_t toStride)
{
    Verdict<From> verdict = 0;
    for (std::size_t at = 0; at < count; ++at, from += fromStride, to += toStride) {
        verdict |= Judge<From>(LoadFrom<Verdict<From>>(from));
        auto const value = static_cast<Stored<From>>(LoadFrom<From>(from));
        std::memcpy(to, &value, StoredSize);
    }
    return verdict;
}

/// Values one behind the other.
template <typename From>
Verdict<From> ConvertWithBaseline(unsigned char const* from, std::size_t count, unsigned char* to)
{
    return ConvertRun<From>(from, count, sizeof(From), to, StoredSize);
}

#if defined(__x86_64__)
/// The same, in registers twice as long.
template <typename From>
[[gnu::target("avx2")]] Verdict<From> ConvertWithAvx2(unsigned char const* from, std::size_t count,
                                                      unsigned char* to)
{
    return ConvertRun<From>(from, count, sizeof(From), to, StoredSize);
}
#endif

template <typename From>
Verdict<From> ConvertContiguousRun(unsigned char const* from, std::size_t count, unsigned char* to)
{
#if defined(__x86_64__)
    if (CpuHasAvx2())
        return ConvertWithAvx2<From>(from, count, to);
#endif
    return ConvertWithBaseline<From>(from, count, to);
}

// Nobody destroys it by way of its base, whose destructor is protected, or derives from it.
template <typename From>
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
class StridedConverter final : public ValueConverter
{
public:
    explicit StridedConverter(StridedValues const& values)
        : values_(values), contiguous_(AreContiguous(values, sizeof(From)))
    {}

    void Convert(TablePart const& part, unsigned char* to) override
    {
        unsigned char const* const first = PlaceOf(values_, part.firstRow, part.firstColumn);
        // Those that are stored as they are don't come here when they lie one behind the other.
        if constexpr (!std::is_same_v<From, Stored<From>>) {
            if (contiguous_ && part.columns == values_.width) {
                verdict_ |= ConvertContiguousRun<From>(first, part.rows * part.columns, to);
                return;
            }
        }
        for (std::size_t column = 0; column < part.columns; ++column)
            verdict_ |= ConvertRun<From>(
                first + static_cast<std::ptrdiff_t>(column) * values_.columnStride, part.rows,
                values_.rowStride, to + column * StoredSize, part.columns * StoredSize);
    }

    bool DidAllFit() const { return (verdict_ & MisfitBits<From>) == 0; }

private:
    StridedValues const& values_;
    bool const contiguous_;
    Verdict<From> verdict_ = 0;
};

template <typename From>
bool ShuffleTable(StridedValues const& values, unsigned char* destination)
{
    if (std::is_same_v<From, Stored<From>> && AreContiguous(values, StoredSize)) {
        ShuffleColumns(values.first, values.rows, values.width, destination);
        return true;
    }
    StridedConverter<From> converter(values);
    ShuffleColumns(converter, values.rows, values.width, destination);
    return converter.DidAllFit();
}

/// Each column by itself, as the planes are.
template <typename From>
bool ShuffleByColumn(StridedValues const& values, unsigned char* destination)
{
    bool allFit = true;
    StridedValues column(values);
    column.width = 1;
    for (std::size_t at = 0; at < values.width; ++at) {
        column.first = PlaceOf(values, 0, at);
        if (!ShuffleTable<From>(column, destination + at * values.rows * StoredSize))
            allFit = false;
    }
    return allFit;
}

/// Some rows at a time are shuffled by themselves; each of their planes is then a run of one of the
/// table's.
template <typename From>
void ShuffleIntoTable(StridedValues const& piece, std::size_t allRows, unsigned char* destination)
{
    constexpr std::size_t Values = 2048;
    std::size_t const planes = piece.width * StoredSize;
    std::size_t const rowsAtATime = std::max<std::size_t>(1, Values / piece.width);
    std::vector<unsigned char> shuffled(rowsAtATime * planes);
    StridedValues some(piece);
    for (std::size_t row = 0; row < piece.rows; row += rowsAtATime) {
        some.first = PlaceOf(piece, row, 0);
        some.rows = std::min(rowsAtATime, piece.rows - row);
        ShuffleTable<From>(some, shuffled.data());
        for (std::size_t plane = 0; plane < planes; ++plane)
            std::memcpy(destination + plane * allRows + row, shuffled.data() + plane * some.rows,
                        some.rows);
    }
}

} // namespace

bool AreStoredAsFloats(StridedValues const& values)
{
    using Element = StridedValues::Element;
    return values.element == Element::Float || values.element == Element::Double;
}

bool ShuffleStrided(StridedValues const& values, void* destination)
{
    auto* const planes = static_cast<unsigned char*>(destination);
    return WithElement(values.element, [&](auto type) {
        using From = decltype(type);
        return IsInColumnOrder(values) ? ShuffleByColumn<From>(values, planes)
                                       : ShuffleTable<From>(values, planes);
    });
}

void ShufflePiece(StridedValues const& piece, std::size_t firstRow, std::size_t rows,
                  void* destination)
{
    auto* const place = static_cast<unsigned char*>(destination) + firstRow;
    WithElement(piece.element,
                [&](auto type) { ShuffleIntoTable<decltype(type)>(piece, rows, place); });
}

} // namespace Zyl2Util
