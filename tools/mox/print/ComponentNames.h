#ifndef MOX_PRINT_COMPONENTNAMES_H
#define MOX_PRINT_COMPONENTNAMES_H

#include <cstdint>
#include <string>
#include <vector>

namespace Mox {

/// What the columns of a dataset of that variable type are called: x, y and z for vectors, xx to zx
/// for symmetric tensors; a single column has the dataset's name.
std::vector<std::string> componentNames(std::uint32_t variableType, std::string const& dataset);

} // namespace Mox

#endif
