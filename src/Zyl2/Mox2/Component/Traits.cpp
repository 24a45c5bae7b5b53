#include "Zyl2/Mox2/Component/Traits.h"

namespace Zyl2 {
namespace Mox2 {
namespace Component {

Attributes const& Traits<std::vector<std::string>>::attributes(std::string const& /*entry*/)
{
    static Attributes const empty_attrs;
    return empty_attrs;
}

} // namespace Component
} // namespace Mox2
} // namespace Zyl2
