#include "Zyl2/Mox2/Array2dImpl.h"
#include "Zyl2/Mox2/ArraySize.h"

#include <algorithm>
#include <utility>

namespace Zyl2 {
namespace Mox2 {

template <typename T>
Array2d<T>::Array2d(unsigned long rows, unsigned long cols)
    : impl_(new Impl(arraySize(rows), arraySize(cols)))
{}

template <typename T>
Array2d<T>::Array2d(unsigned long rows, unsigned long cols, T const& value) : Array2d(rows, cols)
{
    impl_->array.setConstant(value);
}

template <typename T>
Array2d<T>::Array2d(unsigned long rows, unsigned long cols, std::initializer_list<T> const& values)
    : Array2d(Range(), rows, cols, values.begin(), values.end())
{}

template <typename T>
Array2d<T>::Array2d(unsigned long rows, unsigned long cols, std::vector<T> const& values)
    : Array2d(Range(), rows, cols, values.data(), values.data() + values.size())
{}

template <typename T>
Array2d<T>::Array2d(Range /*tag*/, unsigned long rows, unsigned long cols, T const* first,
                    T const* last)
    : Array2d(rows, cols)
{
    auto const given = static_cast<unsigned long>(last - first);
    std::copy_n(first, std::min(given, size()), impl_->array.data());
}

template <typename T>
Array2d<T>::Array2d(Array2d const& other) : impl_(new Impl(*other.impl_))
{}

template <typename T>
Array2d<T>& Array2d<T>::operator=(Array2d const& other)
{
    if (impl_ == nothing())
        return *this = Array2d(other);
    if (this != &other)
        impl_->array = other.impl_->array;
    return *this;
}

template <typename T>
Array2d<T>::Array2d(Array2d&& other) noexcept : impl_(std::exchange(other.impl_, nothing()))
{}

template <typename T>
Array2d<T>& Array2d<T>::operator=(Array2d&& other) noexcept
{
    Array2d taken(std::move(other));
    std::swap(impl_, taken.impl_);
    return *this;
}

template <typename T>
Array2d<T>::~Array2d()
{
    if (impl_ != nothing())
        delete impl_;
}

template <typename T>
typename Array2d<T>::Impl* Array2d<T>::nothing() noexcept
{
    static Impl empty(0, 0);
    return &empty;
}

template <typename T>
unsigned long Array2d<T>::rows() const
{
    return static_cast<unsigned long>(impl_->array.rows());
}

template <typename T>
unsigned long Array2d<T>::cols() const
{
    return static_cast<unsigned long>(impl_->array.cols());
}

template <typename T>
unsigned long Array2d<T>::size() const
{
    return static_cast<unsigned long>(impl_->array.size());
}

template <typename T>
T const& Array2d<T>::operator()(unsigned long row, unsigned long col) const
{
    return impl_->array(static_cast<Eigen::Index>(row), static_cast<Eigen::Index>(col));
}

template <typename T>
T& Array2d<T>::operator()(unsigned long row, unsigned long col)
{
    return impl_->array(static_cast<Eigen::Index>(row), static_cast<Eigen::Index>(col));
}

template <typename T>
T const* Array2d<T>::data() const
{
    return impl_->array.data();
}

template <typename T>
T* Array2d<T>::data()
{
    return impl_->array.data();
}

template <typename T>
void Array2d<T>::copy_from(T const* source)
{
    std::copy_n(source, size(), impl_->array.data());
}

template class Array2d<float>;
template class Array2d<unsigned int>;

} // namespace Mox2
} // namespace Zyl2
