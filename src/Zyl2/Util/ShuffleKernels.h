#ifndef ZYL2_UTIL_SHUFFLEKERNELS_H
#define ZYL2_UTIL_SHUFFLEKERNELS_H

#include "Zyl2/Util/ShuffleInput.h"

#include <cstddef>

namespace Zyl2Util {

/// One way to do what ShuffleColumns does; all ways lead to the same bytes.
using ShuffleFunction = void(ShuffleInput const& input, std::size_t rows, std::size_t width,
                             void* destination);

/// Runs on every processor.
ShuffleFunction ShufflePortable;

#if defined(__x86_64__)

/// Runs on every x86-64 processor.
ShuffleFunction ShuffleSse2;

/// What ShuffleSse2 does with large arrays, which it writes past the caches.
ShuffleFunction ShuffleSse2Streamed;

/// Runs where CpuHasAvx2().
ShuffleFunction ShuffleAvx2;

/// What ShuffleAvx2 does with large arrays, which it writes past the caches.
ShuffleFunction ShuffleAvx2Streamed;

bool CpuHasAvx2();

#endif

} // namespace Zyl2Util

#endif
