#ifndef READ_FRD_RESULTLAYOUT_H
#define READ_FRD_RESULTLAYOUT_H

#include "ResultBlock.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Frd {

/// One dataset that a result block becomes.
struct ResultLayout
{
    std::string name;
    /// Which of the stored components make a row, in the order of the row: x, y, z of a vector;
    /// xx, yy, zz, xy, yz, zx of a tensor.
    std::vector<std::size_t> components;
};

/// The datasets that a block becomes: a vector or symmetric tensor stays whole, anything else is
/// split into one scalar for each stored component. A tensor is what is named as one: six
/// components of a matrix whose names differ in XX, YY, ZZ, XY, YZ and ZX only.
std::vector<ResultLayout> layoutsOf(ResultBlock const& block);

} // namespace Frd

#endif
