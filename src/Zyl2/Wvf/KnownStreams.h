#ifndef ZYL2_WVF_KNOWNSTREAMS_H
#define ZYL2_WVF_KNOWNSTREAMS_H

#include "Zyl2/Util/Buffer.h"

#include <cstddef>
#include <cstdint>

namespace Zyl2Wvf {

/// What blocks become when they are compressed, where that was done before.
class KnownStreams
{
public:
    virtual ~KnownStreams() = default;

    /// \param length of the block's content
    /// \param stream takes the bytes, as many as its size allows
    /// \return their number; 0 where they are not known
    virtual std::size_t Copy(std::size_t slot, std::uint32_t length, Zyl2Util::Buffer& stream) = 0;
};

} // namespace Zyl2Wvf

#endif
