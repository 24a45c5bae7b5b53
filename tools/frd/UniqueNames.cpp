#include "UniqueNames.h"

namespace Frd {

std::string UniqueNames::make(std::string const& name)
{
    std::string candidate = name;
    for (int n = 2; !used_.insert(candidate).second; ++n)
        candidate = name + " (" + std::to_string(n) + ")";
    return candidate;
}

} // namespace Frd
