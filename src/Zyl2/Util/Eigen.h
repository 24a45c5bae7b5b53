#ifndef ZYL2_UTIL_EIGEN_H
#define ZYL2_UTIL_EIGEN_H

#include "Zyl2/Util/Assert.h"

// Hosts rely on an index outside an array stopping the process in Release builds too; Eigen's own
// assertion goes away with NDEBUG. All of Eigen enters through this header for that reason.
#define eigen_assert(expression)                                                                   \
    (static_cast<bool>(expression)                                                                 \
         ? static_cast<void>(0)                                                                    \
         : ::Zyl2Util::AssertionFailed(#expression, __FILE__, __LINE__, __func__))

#include <Eigen/Core>

#endif
