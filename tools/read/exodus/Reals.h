#ifndef READ_EXODUS_REALS_H
#define READ_EXODUS_REALS_H

#include <variant>
#include <vector>

namespace Exodus {

/// Values in the precision that the file has.
using Reals = std::variant<std::vector<float>, std::vector<double>>;

} // namespace Exodus

#endif
