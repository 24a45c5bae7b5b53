#ifndef ZYL2_MOX2_SAVESETTINGS_H
#define ZYL2_MOX2_SAVESETTINGS_H

#include <Zyl2/Mox2/SaverOptions.h>

#include "Zyl2/Wvf/BlockEncoder.h"

#include <cstdint>
#include <optional>

namespace Zyl2 {
namespace Mox2 {

/// How a file is made: what a host asks for or, where it leaves that open, the environment does.
struct SaveSettings
{
    /// \throws InvalidArguments the options or the environment ask for what there is not
    explicit SaveSettings(SaverOptions const& options);

    Zyl2Wvf::BlockEncoder const& encoder;
    unsigned int threads;
    /// Bytes; nothing where each key has to look into the environment for itself.
    std::optional<std::uint32_t> blockSize;
    bool isRecoverable;
};

} // namespace Mox2
} // namespace Zyl2

#endif
