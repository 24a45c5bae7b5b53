#ifndef ZYL2_MOX2_CHOSENENCODER_H
#define ZYL2_MOX2_CHOSENENCODER_H

#include <Zyl2/Mox2/Encoder.h>

#include "Zyl2/Wvf/BlockEncoder.h"

namespace Zyl2 {
namespace Mox2 {

/// The encoder that a host asks for or, where it leaves that open, the environment does.
/// \throws InvalidArguments there is none of that name, or it was not built in
Zyl2Wvf::BlockEncoder const& chosenEncoder(Encoder encoder);

} // namespace Mox2
} // namespace Zyl2

#endif
