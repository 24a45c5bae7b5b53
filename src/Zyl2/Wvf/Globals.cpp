#include "Zyl2/Wvf/Globals.h"

namespace Zyl2Wvf {

std::string const mox_file_version = "1.3";

} // namespace Zyl2Wvf
