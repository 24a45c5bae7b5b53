#include "Zyl2/Mox2/Array1dImpl.h"
#include "Zyl2/Mox2/ArraySize.h"

#include <algorithm>
#include <utility>

namespace Zyl2 {
namespace Mox2 {

template <typename T>
Array1d<T>::Array1d(unsigned long size) : impl_(new Impl(arraySize(size)))
{}

template <typename T>
Array1d<T>::Array1d(unsigned long size, T const& value) : Array1d(size)
{
    impl_->array.setConstant(value);
}

template <typename T>
Array1d<T>::Array1d(std::initializer_list<T> const& values)
    : Array1d(Range(), values.begin(), values.end())
{}

template <typename T>
Array1d<T>::Array1d(std::vector<T> const& values)
    : Array1d(Range(), values.data(), values.data() + values.size())
{}

template <typename T>
Array1d<T>::Array1d(Range /*tag*/, T const* first, T const* last)
    : Array1d(static_cast<unsigned long>(last - first))
{
    std::copy(first, last, impl_->array.data());
}

template <typename T>
Array1d<T>::Array1d(Array1d const& other) : impl_(new Impl(*other.impl_))
{}

template <typename T>
Array1d<T>& Array1d<T>::operator=(Array1d const& other)
{
    if (impl_ == nothing())
        return *this = Array1d(other);
    if (this != &other)
        impl_->array = other.impl_->array;
    return *this;
}

template <typename T>
Array1d<T>::Array1d(Array1d&& other) noexcept : impl_(std::exchange(other.impl_, nothing()))
{}

template <typename T>
Array1d<T>& Array1d<T>::operator=(Array1d&& other) noexcept
{
    Array1d taken(std::move(other));
    std::swap(impl_, taken.impl_);
    return *this;
}

template <typename T>
Array1d<T>::~Array1d()
{
    if (impl_ != nothing())
        delete impl_;
}

template <typename T>
typename Array1d<T>::Impl* Array1d<T>::nothing() noexcept
{
    static Impl empty(0);
    return &empty;
}

template <typename T>
unsigned long Array1d<T>::size() const
{
    return static_cast<unsigned long>(impl_->array.size());
}

template <typename T>
T const& Array1d<T>::operator()(unsigned long index) const
{
    return impl_->array(static_cast<Eigen::Index>(index));
}

template <typename T>
T& Array1d<T>::operator()(unsigned long index)
{
    return impl_->array(static_cast<Eigen::Index>(index));
}

template <typename T>
T const& Array1d<T>::operator[](unsigned long index) const
{
    return (*this)(index);
}

template <typename T>
T& Array1d<T>::operator[](unsigned long index)
{
    return (*this)(index);
}

template <typename T>
T const* Array1d<T>::data() const
{
    return impl_->array.data();
}

template <typename T>
T* Array1d<T>::data()
{
    return impl_->array.data();
}

template <typename T>
void Array1d<T>::copy_from(T const* source)
{
    std::copy_n(source, size(), impl_->array.data());
}

template class Array1d<float>;
template class Array1d<unsigned int>;

} // namespace Mox2
} // namespace Zyl2
