#ifndef ZYL2_WVF_DEFAULTBLOCKSIZE_H
#define ZYL2_WVF_DEFAULTBLOCKSIZE_H

#include <optional>

namespace Zyl2Wvf {

/// The byte count in the environment variable MOXWRITER_DEFAULT_BLOCK_SIZE; 0 for a text that is no
/// number, nothing when the variable is not set.
std::optional<unsigned long> DefaultBlockSizeFromEnvironment();

} // namespace Zyl2Wvf

#endif
