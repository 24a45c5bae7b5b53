#ifndef TESTS_INTEGRATION_OVERWRITING_H
#define TESTS_INTEGRATION_OVERWRITING_H

#include <Zyl2/Mox2/SaverOptions.h>

namespace Integration {

/// Options with which a file that is there is replaced.
inline Zyl2::Mox2::SaverOptions overwriting()
{
    Zyl2::Mox2::SaverOptions options;
    options.overwrite = true;
    return options;
}

} // namespace Integration

#endif
