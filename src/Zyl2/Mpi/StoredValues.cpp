#include "Zyl2/Mpi/StoredValues.h"

#include "Zyl2/Mpi/Failure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>

namespace Zyl2 {
namespace Mpi {

namespace Sites = Exception::Sites::Mpi;

using Mox2::ArrayView;
using Element = ArrayView::Element;

namespace {

constexpr std::size_t StoredSize = 4;
/// Values that are converted at a time.
constexpr std::size_t PieceValues = 4096;

template <typename From>
bool fits(From value)
{
    if constexpr (std::is_same_v<From, double>)
        return !std::isfinite(value) || std::isfinite(static_cast<float>(value));
    else if constexpr (std::is_signed_v<From> && std::is_integral_v<From>)
        return value >= 0 &&
               static_cast<std::uint64_t>(value) <= std::numeric_limits<std::uint32_t>::max();
    else if constexpr (std::is_integral_v<From>)
        return value <= std::numeric_limits<std::uint32_t>::max();
    else
        return true;
}

[[noreturn]] void raiseMisfit(std::size_t row, std::size_t column, std::string const& value,
                              char const* range)
{
    raiseWith(Sites::ValueDoesNotFit, "row " + std::to_string(row) + ", column " +
                                          std::to_string(column) + " holds " + value +
                                          ", which is beyond the range of " + range);
}

template <typename From>
class Conversion
{
public:
    explicit Conversion(ArrayView const& values) : values_(values) {}

    void visit(std::function<void(void const*, std::size_t)> const& visit)
    {
        std::size_t const rowsAtATime = std::max<std::size_t>(1, PieceValues / values_.columns());
        std::vector<Stored> piece(std::min(rowsAtATime, values_.rows()) * values_.columns());
        for (std::size_t first = 0; first < values_.rows(); first += rowsAtATime) {
            std::size_t const rows = std::min(rowsAtATime, values_.rows() - first);
            for (std::size_t row = 0; row < rows; ++row)
                for (std::size_t column = 0; column < values_.columns(); ++column)
                    piece[row * values_.columns() + column] = stored(first + row, column);
            visit(piece.data(), rows * values_.columns() * StoredSize);
        }
    }

private:
    using Stored = std::conditional_t<std::is_floating_point_v<From>, float, std::uint32_t>;

    Stored stored(std::size_t row, std::size_t column) const
    {
        From value;
        std::memcpy(&value,
                    static_cast<unsigned char const*>(values_.data()) +
                        static_cast<std::ptrdiff_t>(row) * values_.rowStride() +
                        static_cast<std::ptrdiff_t>(column) * values_.columnStride(),
                    sizeof value);
        if (!fits(value))
            raiseMisfit(row, column, std::to_string(value),
                        std::is_floating_point_v<From> ? "a float" : "0 to 4294967295");
        return static_cast<Stored>(value);
    }

    ArrayView const& values_;
};

bool areStoredAsTheyAre(ArrayView const& values)
{
    bool const isStoredElement =
        values.element() == Element::Float32 || values.element() == Element::UInt32;
    bool const hasNoGaps =
        values.columnStride() == static_cast<std::ptrdiff_t>(StoredSize) &&
        values.rowStride() == static_cast<std::ptrdiff_t>(values.columns() * StoredSize);
    return isStoredElement && hasNoGaps;
}

} // namespace

Element storedElement(ArrayView const& values)
{
    bool const areFloats =
        values.element() == Element::Float32 || values.element() == Element::Float64;
    return areFloats ? Element::Float32 : Element::UInt32;
}

void visitStored(ArrayView const& values,
                 std::function<void(void const* bytes, std::size_t count)> const& visit)
{
    if (areStoredAsTheyAre(values))
        return visit(values.data(), values.rows() * values.columns() * StoredSize);
    switch (values.element()) {
    case Element::Float32:
        return Conversion<float>(values).visit(visit);
    case Element::Float64:
        return Conversion<double>(values).visit(visit);
    case Element::Int32:
        return Conversion<std::int32_t>(values).visit(visit);
    case Element::UInt32:
        return Conversion<std::uint32_t>(values).visit(visit);
    case Element::Int64:
        return Conversion<std::int64_t>(values).visit(visit);
    case Element::UInt64:
        return Conversion<std::uint64_t>(values).visit(visit);
    }
}

} // namespace Mpi
} // namespace Zyl2
