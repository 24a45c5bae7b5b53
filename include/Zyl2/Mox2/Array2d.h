#ifndef ZYL2_MOX2_ARRAY2D_H
#define ZYL2_MOX2_ARRAY2D_H

#include <Zyl2/Export.h>

#include <initializer_list>
#include <type_traits>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

/// A table of rows by columns, stored row after row: coordinates (rows x 3), displacements
/// (rows x 3), stresses (rows x 6).
///
/// \tparam T `float` or `unsigned int`
///
/// Row or column counts of 2^31 and more raise `std::bad_alloc`. An index outside the table stops
/// the process with a message, in every build.
template <typename T>
class Array2d
{
    static_assert(std::is_same<T, float>::value || std::is_same<T, unsigned int>::value,
                  "arrays hold float or unsigned int");

public:
    class Impl;

    /// `rows` x `cols` elements, left uninitialised.
    /// \param rows number of rows
    /// \param cols number of columns
    /// \throws std::bad_alloc no memory, or 2^31 rows or columns and more; so do all constructors
    Array2d(unsigned long rows, unsigned long cols);

    /// `rows` x `cols` elements, all `value`.
    /// \param rows  number of rows
    /// \param cols  number of columns
    /// \param value what each element is
    Array2d(unsigned long rows, unsigned long cols, T const& value);

    /// Filled in row order. Elements beyond a short source stay uninitialised, surplus source
    /// elements are ignored: give exactly `rows` x `cols` values.
    /// \param rows   number of rows
    /// \param cols   number of columns
    /// \param values row after row
    Array2d(unsigned long rows, unsigned long cols, std::initializer_list<T> const& values);

    /// \copydoc Array2d(unsigned long, unsigned long, std::initializer_list<T> const&)
    Array2d(unsigned long rows, unsigned long cols, std::vector<T> const& values);

    /// Filled in row order from the elements from `first` up to, but without, `last`; short and
    /// long sources are treated as those of the list form.
    /// \param rows  number of rows
    /// \param cols  number of columns
    /// \param first points to the first element of the first row
    /// \param last  points behind the last element
    /// \pre both point into one array, `first` not behind `last`
    template <typename U, typename = typename std::enable_if<
                              std::is_same<typename std::remove_cv<U>::type, T>::value>::type>
    Array2d(unsigned long rows, unsigned long cols, U* first, U* last)
        : Array2d(Range(), rows, cols, first, last)
    {}

    /// A deep copy.
    /// \param other stays as it is
    Array2d(Array2d const& other);
    /// Takes the other table's shape and elements.
    /// \param other stays as it is
    /// \return this table
    /// \throws std::bad_alloc no memory
    Array2d& operator=(Array2d const& other);
    /// Takes the elements over without copying them.
    /// \param other is empty afterwards, and may be used and assigned to
    Array2d(Array2d&& other) noexcept;
    /// Takes the elements over without copying them.
    /// \param other is empty afterwards, and may be used and assigned to
    /// \return this table
    Array2d& operator=(Array2d&& other) noexcept;
    ~Array2d();

    /// Number of rows.
    unsigned long rows() const;
    /// Number of columns.
    unsigned long cols() const;
    /// `rows()` times `cols()`.
    unsigned long size() const;

    /// One element.
    /// \param row counted from 0
    /// \param col counted from 0
    /// \return the element
    /// \pre `row` is less than `rows()` and `col` less than `cols()`
    T const& operator()(unsigned long row, unsigned long col) const;
    /// \copydoc operator()(unsigned long, unsigned long) const
    T& operator()(unsigned long row, unsigned long col);

    /// All elements, row after row.
    /// \return the first one; valid until the table is assigned to, moved from or destroyed
    T const* data() const;
    /// \copydoc data() const
    T* data();

    /// Copies `size()` elements from `source` into the table, in row order.
    /// \param source row after row
    /// \pre `source` holds at least `size()` elements
    void copy_from(T const* source);

    /// The storage, for the library's own use.
    Impl const& impl() const { return *impl_; }

private:
    struct Range
    {};
    Array2d(Range, unsigned long rows, unsigned long cols, T const* first, T const* last);

    /// What arrays that were moved from share: it is never written to.
    static Impl* nothing() noexcept;

    Impl* impl_;
};

extern template class ZYL2_EXPORT Array2d<float>;
extern template class ZYL2_EXPORT Array2d<unsigned int>;

} // namespace Mox2
} // namespace Zyl2

#endif
