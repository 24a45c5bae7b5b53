#ifndef ZYL2_MOX2_INTEGERS_H
#define ZYL2_MOX2_INTEGERS_H

#include <Zyl2/Mox2/ArrayView.h>

#include <cstdint>
#include <cstring>
#include <type_traits>

namespace Zyl2 {
namespace Mox2 {

inline bool areIntegers(ArrayView const& view)
{
    return view.element() != ArrayView::Element::Float32 &&
           view.element() != ArrayView::Element::Float64;
}

/// Calls `take(row, column, value)` for each value of a view of integers, in row order, with the
/// type that it has there.
template <typename T, typename TakeT>
void forEachOf(ArrayView const& view, TakeT const& take)
{
    auto const* const first = static_cast<unsigned char const*>(view.data());
    for (std::size_t row = 0; row < view.rows(); ++row) {
        auto const* place = first + static_cast<std::ptrdiff_t>(row) * view.rowStride();
        for (std::size_t column = 0; column < view.columns(); ++column) {
            // A view need not be aligned.
            T value;
            std::memcpy(&value, place, sizeof(T));
            take(row, column, value);
            place += view.columnStride();
        }
    }
}

/// \pre areIntegers(view)
template <typename TakeT>
void forEachInteger(ArrayView const& view, TakeT const& take)
{
    ArrayView::Element const element = view.element();
    if (element == ArrayView::Element::Int32)
        forEachOf<std::int32_t>(view, take);
    else if (element == ArrayView::Element::UInt32)
        forEachOf<std::uint32_t>(view, take);
    else if (element == ArrayView::Element::Int64)
        forEachOf<std::int64_t>(view, take);
    else if (element == ArrayView::Element::UInt64)
        forEachOf<std::uint64_t>(view, take);
}

} // namespace Mox2
} // namespace Zyl2

#endif
