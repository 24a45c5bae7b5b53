#ifndef ZYL2_MOX2_ARRAY1D_H
#define ZYL2_MOX2_ARRAY1D_H

#include <Zyl2/Export.h>

#include <initializer_list>
#include <type_traits>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

/// A vector of values: ids, connectivity, one scalar per node or element.
///
/// \tparam T `float` or `unsigned int`
///
/// Sizes of 2^31 and more raise `std::bad_alloc`. An index outside the array stops the process
/// with a message, in every build.
template <typename T>
class Array1d
{
    static_assert(std::is_same<T, float>::value || std::is_same<T, unsigned int>::value,
                  "arrays hold float or unsigned int");

public:
    class Impl;

    /// `size` elements, left uninitialised.
    /// \param size number of elements
    /// \throws std::bad_alloc no memory, or 2^31 elements and more; so do all constructors
    explicit Array1d(unsigned long size);

    /// `size` elements, all `value`.
    /// \param size  number of elements
    /// \param value what each of them is
    Array1d(unsigned long size, T const& value);

    /// The elements of `values`, in order.
    /// \param values any number of them
    Array1d(std::initializer_list<T> const& values);

    /// The elements of `values`, in order.
    /// \param values any number of them
    Array1d(std::vector<T> const& values);

    /// The elements from `first` up to, but without, `last`, in order.
    /// \param first points to the first element
    /// \param last  points behind the last one
    /// \pre both point into one array, `first` not behind `last`
    template <typename U, typename = typename std::enable_if<
                              std::is_same<typename std::remove_cv<U>::type, T>::value>::type>
    Array1d(U* first, U* last) : Array1d(Range(), first, last)
    {}

    /// A deep copy.
    /// \param other stays as it is
    Array1d(Array1d const& other);
    /// Takes the other array's size and elements.
    /// \param other stays as it is
    /// \return this array
    /// \throws std::bad_alloc no memory
    Array1d& operator=(Array1d const& other);
    /// Takes the elements over without copying them.
    /// \param other is empty afterwards, and may be used and assigned to
    Array1d(Array1d&& other) noexcept;
    /// Takes the elements over without copying them.
    /// \param other is empty afterwards, and may be used and assigned to
    /// \return this array
    Array1d& operator=(Array1d&& other) noexcept;
    ~Array1d();

    /// Number of elements.
    unsigned long size() const;

    /// One element.
    /// \param index counted from 0
    /// \return the element
    /// \pre `index` is less than `size()`
    T const& operator()(unsigned long index) const;
    /// \copydoc operator()(unsigned long) const
    T& operator()(unsigned long index);
    /// \copydoc operator()(unsigned long) const
    T const& operator[](unsigned long index) const;
    /// \copydoc operator()(unsigned long) const
    T& operator[](unsigned long index);

    /// All elements, one after the other.
    /// \return the first one; valid until the array is assigned to, moved from or destroyed
    T const* data() const;
    /// \copydoc data() const
    T* data();

    /// Copies `size()` elements from `source` into the array.
    /// \param source one element after the other
    /// \pre `source` holds at least `size()` elements
    void copy_from(T const* source);

    /// The storage, for the library's own use.
    Impl const& impl() const { return *impl_; }

private:
    struct Range
    {};
    Array1d(Range, T const* first, T const* last);

    /// What arrays that were moved from share: it is never written to.
    static Impl* nothing() noexcept;

    Impl* impl_;
};

extern template class ZYL2_EXPORT Array1d<float>;
extern template class ZYL2_EXPORT Array1d<unsigned int>;

} // namespace Mox2
} // namespace Zyl2

#endif
