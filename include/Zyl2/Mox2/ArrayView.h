#ifndef ZYL2_MOX2_ARRAYVIEW_H
#define ZYL2_MOX2_ARRAYVIEW_H

#include <Zyl2/Export.h>
#include <Zyl2/Mox2/Array2d.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace Zyl2 {
namespace Mox2 {

/// Whether a view may have elements of type `T`: float, double, and the integers of 32 and 64 bits,
/// with and without sign.
template <typename T>
struct IsViewElement
    : std::integral_constant<
          bool, std::is_same<T, float>::value || std::is_same<T, double>::value ||
                    std::is_same<T, int>::value || std::is_same<T, unsigned int>::value ||
                    std::is_same<T, long>::value || std::is_same<T, unsigned long>::value ||
                    std::is_same<T, long long>::value || std::is_same<T, unsigned long long>::value>
{};

/// How values of type `V` are viewed. A host may specialise it for an array type of its own, with
/// `exists` true and a static `view` that makes an `ArrayView` of a `V const&`.
template <typename V, typename = void>
struct ArrayViewOf
{
    static constexpr bool exists = false;
};

class ZYL2_EXPORT ArrayView;

template <>
struct ArrayViewOf<ArrayView>
{
    static constexpr bool exists = true;
    static ArrayView const& view(ArrayView const& values) { return values; }
};

/// Values where they are: a table of rows by columns in the memory of the host, which
/// `Model::addArrayProperty` takes wherever it takes an `Array1d` or `Array2d`, and writes without
/// a copy of them.
///
/// `float` and `double` are stored as floats, doubles rounded to nearest; integers of 32 and 64
/// bits as unsigned ones of 32. A value that has no place there is refused.
///
/// A view does not keep what it looks at alive, and looks at it only while it is being added.
class ZYL2_EXPORT ArrayView
{
public:
    /// Type of the elements.
    enum class Element : unsigned int
    {
        Float32 = 0,
        Float64 = 1,
        Int32 = 2,
        UInt32 = 3,
        Int64 = 4,
        UInt64 = 5
    };

    /// No rows.
    ArrayView() noexcept = default;

    /// Elements in row order, without gaps.
    /// \param data    the first element; may be null when there are no rows
    /// \param rows    number of rows
    /// \param columns number of columns
    template <typename T, typename = typename std::enable_if<IsViewElement<T>::value>::type>
    ArrayView(T const* data, std::size_t rows, std::size_t columns = 1) noexcept
        : ArrayView(data, elementOf<T>(), rows, columns,
                    static_cast<std::ptrdiff_t>(columns * sizeof(T)),
                    static_cast<std::ptrdiff_t>(sizeof(T)))
    {}

    /// Elements at any distance from each other: columns first, every third row, backwards.
    /// \param data         the element of row 0 and column 0
    /// \param rows         number of rows
    /// \param columns      number of columns
    /// \param rowStride    bytes from one row to the next, of any sign
    /// \param columnStride bytes from one column to the next, of any sign
    template <typename T, typename = typename std::enable_if<IsViewElement<T>::value>::type>
    ArrayView(T const* data, std::size_t rows, std::size_t columns, std::ptrdiff_t rowStride,
              std::ptrdiff_t columnStride) noexcept
        : ArrayView(data, elementOf<T>(), rows, columns, rowStride, columnStride)
    {}

    /// Elements of a type that is known only when the program runs.
    /// \param data         the element of row 0 and column 0; need not be aligned
    /// \param element      type of the elements
    /// \param rows         number of rows
    /// \param columns      number of columns
    /// \param rowStride    bytes from one row to the next, of any sign
    /// \param columnStride bytes from one column to the next, of any sign
    ArrayView(void const* data, Element element, std::size_t rows, std::size_t columns,
              std::ptrdiff_t rowStride, std::ptrdiff_t columnStride) noexcept
        : data_(data), rows_(rows), columns_(columns), rowStride_(rowStride),
          columnStride_(columnStride), element_(element)
    {}

    /// A C array, a `std::vector`, or what else has `data()` and `size()`: one value per row, or
    /// one `std::array` or C array per row. An `Array1d` or `Array2d` as it is.
    /// \param values must stay alive, and where they are, as long as the view is used
    template <typename V, typename = typename std::enable_if<ArrayViewOf<V>::exists>::type>
    ArrayView(V const& values) : ArrayView(ArrayViewOf<V>::view(values))
    {}

    /// Rows of `columns` values each, of what has `data()` and `size()` and holds one row after the
    /// other.
    /// \param values  a multiple of `columns` values
    /// \param columns number of columns
    /// \throws Exception::InvalidArguments default text: the values fill no whole rows
    template <typename V>
    static ArrayView table(V const& values, std::size_t columns)
    {
        return ArrayView(values.data(), wholeRows(values.size(), columns), columns);
    }

    void const* data() const noexcept { return data_; }
    Element element() const noexcept { return element_; }
    std::size_t rows() const noexcept { return rows_; }
    std::size_t columns() const noexcept { return columns_; }
    /// Bytes from one row to the next.
    std::ptrdiff_t rowStride() const noexcept { return rowStride_; }
    /// Bytes from one column to the next.
    std::ptrdiff_t columnStride() const noexcept { return columnStride_; }

private:
    template <typename T>
    static constexpr Element elementOf()
    {
        return std::is_floating_point<T>::value
                   ? (sizeof(T) == 4 ? Element::Float32 : Element::Float64)
                   : (std::is_signed<T>::value
                          ? (sizeof(T) == 4 ? Element::Int32 : Element::Int64)
                          : (sizeof(T) == 4 ? Element::UInt32 : Element::UInt64));
    }
    static std::size_t wholeRows(std::size_t values, std::size_t columns);

    void const* data_ = nullptr;
    std::size_t rows_ = 0;
    std::size_t columns_ = 1;
    std::ptrdiff_t rowStride_ = 0;
    std::ptrdiff_t columnStride_ = 0;
    Element element_ = Element::Float32;
};

/// A row as an element of a C array or a container: a number, or an array of them.
template <typename T>
struct ViewRow
{
    static constexpr bool exists = IsViewElement<T>::value;
    static ArrayView view(T const* rows, std::size_t count) { return ArrayView(rows, count); }
};
template <typename T, std::size_t N>
struct ViewRow<T[N]>
{
    static constexpr bool exists = IsViewElement<T>::value;
    static ArrayView view(T const (*rows)[N], std::size_t count)
    {
        return ArrayView(count == 0 ? nullptr : *rows, count, N);
    }
};
template <typename T, std::size_t N>
struct ViewRow<std::array<T, N>>
{
    static constexpr bool exists = IsViewElement<T>::value && N != 0;
    static ArrayView view(std::array<T, N> const* rows, std::size_t count)
    {
        return ArrayView(count == 0 ? nullptr : rows->data(), count, N);
    }
};

template <typename T>
struct ArrayViewOf<Array2d<T>>
{
    static constexpr bool exists = true;
    static ArrayView view(Array2d<T> const& values)
    {
        return ArrayView(values.data(), values.rows(), values.cols());
    }
};
template <typename T, std::size_t N>
struct ArrayViewOf<T[N]> : ViewRow<typename std::remove_cv<T>::type>
{
    static ArrayView view(T const (&values)[N])
    {
        return ViewRow<typename std::remove_cv<T>::type>::view(values, N);
    }
};

/// What `data()` of a constant `V` points to; no type where it has no `data()` and `size()`.
template <typename V>
using ContainerElement =
    typename std::remove_cv<typename std::remove_pointer<typename std::enable_if<
        std::is_convertible<decltype(std::declval<V const&>().size()), std::size_t>::value,
        decltype(std::declval<V const&>().data())>::type>::type>::type;

/// Whether a `V` counts rows: what does so is no mere sequence, and its layout is not known here.
template <typename V>
struct CountsRows
{
    template <typename U>
    static auto test(int)
        -> decltype(static_cast<void>(std::declval<U const&>().rows()), std::true_type());
    template <typename U>
    static std::false_type test(...);
    static constexpr bool value = decltype(test<V>(0))::value;
};

/// What has `data()` and `size()`, such as an `Array1d`.
template <typename V>
struct ArrayViewOf<
    V, typename std::enable_if<ViewRow<ContainerElement<V>>::exists && !CountsRows<V>::value>::type>
{
    static constexpr bool exists = true;
    static ArrayView view(V const& values)
    {
        return ViewRow<ContainerElement<V>>::view(values.data(),
                                                  static_cast<std::size_t>(values.size()));
    }
};

} // namespace Mox2
} // namespace Zyl2

#endif
