#ifndef ZYL2_WVF_BLOCKSTREAM_H
#define ZYL2_WVF_BLOCKSTREAM_H

#include "Zyl2/Wvf/BlockEncoder.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace Zyl2Wvf {

/// Room for what a block of `length` bytes becomes when it is compressed, whatever it holds.
std::size_t BlockStreamCapacity(std::uint32_t length) noexcept;

/// Makes of a block's content what stands for it in the file. Threads may call it at the same time.
/// \param content  may be null when `length` is 0
/// \param stream   `BlockStreamCapacity(length)` bytes
/// \param level    zlib's compression level
/// \return bytes of the result; nothing when the encoder and zlib fail, for lack of memory or
///         because there is no such level
std::optional<std::size_t> MakeBlockStream(unsigned char const* content, std::uint32_t length,
                                           unsigned char* stream, BlockEncoder const& encoder,
                                           int level) noexcept;

} // namespace Zyl2Wvf

#endif
