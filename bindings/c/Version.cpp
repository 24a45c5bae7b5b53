#include <moxwriter.h>

#include <Zyl2/Version.h>

static_assert(MOX_VERSION_MAJOR == ZYL2_VERSION_MAJOR);
static_assert(MOX_VERSION_MINOR == ZYL2_VERSION_MINOR);
static_assert(MOX_VERSION_PATCH == ZYL2_VERSION_PATCH);

char const* mox_version()
{
    return Zyl2::versionString();
}

int mox_version_number()
{
    return Zyl2::version();
}
