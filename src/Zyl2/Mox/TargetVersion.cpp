#include "Zyl2/Mox/TargetVersion.h"

namespace Zyl2Mox {

std::string const& TargetVersion()
{
    static std::string const version = "0.6";
    return version;
}

bool IsOlderLayout()
{
    return TargetVersion() == "1.3";
}

} // namespace Zyl2Mox
