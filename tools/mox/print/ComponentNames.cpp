#include "ComponentNames.h"

namespace Mox {

std::vector<std::string> componentNames(std::uint32_t variableType, std::string const& dataset)
{
    switch (variableType) {
    case 1:
    case 13:
    case 17:
    case 21:
    case 26:
        return {"x", "y", "z"};
    case 14:
    case 18:
    case 22:
    case 27:
        return {"x", "y", "z", "rx", "ry", "rz"};
    case 15:
    case 19:
    case 23:
    case 28:
        return {"xx", "yy", "zz", "xy", "yz", "zx"};
    default:
        return {dataset};
    }
}

} // namespace Mox
