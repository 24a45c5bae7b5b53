#ifndef ZYL2_MPI_STOREDVALUES_H
#define ZYL2_MPI_STOREDVALUES_H

#include <Zyl2/Mox2/ArrayView.h>

#include <cstddef>
#include <functional>

namespace Zyl2 {
namespace Mpi {

/// `Float32` for floats and doubles, `UInt32` for integers.
Mox2::ArrayView::Element storedElement(Mox2::ArrayView const& values);

/// Hands over the values as they are stored, row after row, in pieces of whole rows.
/// \param values of at least one row and one column
/// \throws Exception::OverflowError a value has no place among the stored ones, as for
///         `Mox2::Model::addArrayProperty`; pieces before it were handed over
void visitStored(Mox2::ArrayView const& values,
                 std::function<void(void const* bytes, std::size_t count)> const& visit);

} // namespace Mpi
} // namespace Zyl2

#endif
