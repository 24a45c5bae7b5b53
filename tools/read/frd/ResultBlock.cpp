#include "ResultBlock.h"

#include <algorithm>
#include <iterator>

namespace Frd {

std::vector<Component> ResultBlock::storedComponents() const
{
    std::vector<Component> stored;
    std::copy_if(components.begin(), components.end(), std::back_inserter(stored),
                 [](Component const& component) { return component.isStored; });
    return stored;
}

} // namespace Frd
