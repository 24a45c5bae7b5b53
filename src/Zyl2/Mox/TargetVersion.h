#ifndef ZYL2_MOX_TARGETVERSION_H
#define ZYL2_MOX_TARGETVERSION_H

#include <string>

namespace Zyl2Mox {

/// Format version that trees are written for. Not the version that the file's header states: it is
/// compared with that of the older layout, which has positions of 32 bits.
std::string const& TargetVersion();

/// Whether trees are written in the older layout.
bool IsOlderLayout();

} // namespace Zyl2Mox

#endif
