#include "UniqueNames.h"

namespace Common {

std::string UniqueNames::make(std::string const& name)
{
    std::string candidate = name;
    int& number = next_.try_emplace(name, 2).first->second;
    for (; !used_.insert(candidate).second; ++number)
        candidate = name + " (" + std::to_string(number) + ")";
    return candidate;
}

} // namespace Common
