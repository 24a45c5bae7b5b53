#ifndef ZYL2_WVF_GLOBALS_H
#define ZYL2_WVF_GLOBALS_H

#include <string>

namespace Zyl2Wvf {

/// Version of the container format, as it stands in every file.
extern std::string const mox_file_version;

} // namespace Zyl2Wvf

#endif
