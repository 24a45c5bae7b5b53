#ifndef ZYL2_MOX2_DATA_DATA_H
#define ZYL2_MOX2_DATA_DATA_H

#include <Zyl2/Mox2/ArrayView.h>

#include "Zyl2/Mox2/Data/StoredArray.h"
#include "Zyl2/Mox2/Recovery/RecoveredArray.h"

#include <type_traits>

namespace Zyl2 {
namespace Data {

/// An array with attributes.
///
/// The array is looked at, not copied: the host's array outlives the call that adds it, and a copy
/// of a large dataset would cost as much again.
template <typename ArrayT, typename AttrMapT>
class Data
{
public:
    using ArrayType = ArrayT;
    using AttributesType = AttrMapT;

    Data() = default;
    Data(ArrayT const& values, AttrMapT const& valueAttributes)
        : array(values), attributes(valueAttributes)
    {}
    Data(Data const&) = default;
    Data& operator=(Data const&) = default;
    virtual ~Data() = default;

    /// A host's own view is one already, and so is what a recovery has found.
    static constexpr bool isView = std::is_same_v<ArrayT, Mox2::ArrayView> ||
                                   std::is_same_v<ArrayT, Mox2::Recovery::RecoveredArray>;
    std::conditional_t<isView, ArrayT, StoredArray<ArrayT>> array;
    AttrMapT attributes;
};

} // namespace Data
} // namespace Zyl2

#endif
