#ifndef ZYL2_MOX2_ARRAYVIEWEIGEN_H
#define ZYL2_MOX2_ARRAYVIEWEIGEN_H

#include <Zyl2/Mox2/ArrayView.h>

#include <Eigen/Core>

#include <cstddef>
#include <type_traits>
#include <utility>

// For hosts that have Eigen; the library's other headers do without it.

namespace Zyl2 {
namespace Mox2 {

/// Whether `V` is one of Eigen's dense types that have their values in memory.
template <typename V>
struct IsEigenInMemory
{
    template <typename U, typename D>
    static std::integral_constant<bool, (int(U::Flags) & int(Eigen::DirectAccessBit)) != 0>
    test(Eigen::DenseBase<D> const*);
    template <typename U>
    static std::false_type test(...);
    static constexpr bool value = decltype(test<V>(static_cast<V const*>(nullptr)))::value;
};

/// Matrices, arrays, maps, references and blocks of either storage order. One row or one column
/// that is known to be one when compiled is a value per row.
template <typename V>
struct ArrayViewOf<
    V, typename std::enable_if<std::is_class<V>::value && IsEigenInMemory<V>::value>::type>
{
    using Scalar = typename std::remove_cv<typename V::Scalar>::type;
    static constexpr bool exists = IsViewElement<Scalar>::value;

    static ArrayView view(V const& values)
    {
        std::ptrdiff_t const size = static_cast<std::ptrdiff_t>(sizeof(Scalar));
        std::ptrdiff_t const inner = values.innerStride() * size;
        std::ptrdiff_t const outer = values.outerStride() * size;
        if (V::IsVectorAtCompileTime)
            return ArrayView(values.data(), static_cast<std::size_t>(values.size()), 1, inner,
                             size);
        return ArrayView(values.data(), static_cast<std::size_t>(values.rows()),
                         static_cast<std::size_t>(values.cols()), V::IsRowMajor ? outer : inner,
                         V::IsRowMajor ? inner : outer);
    }
};

} // namespace Mox2
} // namespace Zyl2

#endif
