#ifndef ZYL2_MOX2_IDSVIEW_H
#define ZYL2_MOX2_IDSVIEW_H

#include <Zyl2/Mox2/Array1d.h>

#include <cstddef>
#include <type_traits>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

/// The ids that an array is added to, where the host has them: one, or a pointer and their number,
/// a `std::vector`, an `Array1d`.
///
/// Does not keep what it looks at alive.
class IdsView
{
public:
    /// One id, kept by the view itself. One that no node can have is taken for none.
    template <typename T, typename = typename std::enable_if<std::is_integral<T>::value &&
                                                             !std::is_same<T, bool>::value>::type>
    IdsView(T id) noexcept
        : single_(static_cast<T>(static_cast<unsigned int>(id)) == id
                      ? static_cast<unsigned int>(id)
                      : 4294967295U)
    {}

    /// Ids one behind the other.
    /// \param ids   the first one; may be null when there are none
    /// \param count how many there are
    IdsView(unsigned int const* ids, std::size_t count) noexcept
        : ids_(ids), count_(count), isSingle_(false)
    {}

    /// \param ids a C array
    template <std::size_t N>
    IdsView(unsigned int const (&ids)[N]) noexcept : IdsView(ids, N)
    {}

    /// \param ids any number of them
    IdsView(std::vector<unsigned int> const& ids) noexcept : IdsView(ids.data(), ids.size()) {}

    /// \param ids any number of them
    IdsView(Array1d<unsigned int> const& ids) : IdsView(ids.data(), ids.size()) {}

    unsigned int const* data() const noexcept { return isSingle_ ? &single_ : ids_; }
    std::size_t size() const noexcept { return count_; }

private:
    unsigned int single_ = 0;
    unsigned int const* ids_ = nullptr;
    std::size_t count_ = 1;
    bool isSingle_ = true;
};

} // namespace Mox2
} // namespace Zyl2

#endif
