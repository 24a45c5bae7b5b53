#include <Zyl2/Version.h>

namespace Zyl2 {

int version() noexcept
{
    return ZYL2_VERSION;
}

char const* versionString() noexcept
{
    return ZYL2_VERSION_STRING;
}

} // namespace Zyl2
