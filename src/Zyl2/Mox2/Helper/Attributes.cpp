#include "Zyl2/Mox2/Helper/Attributes.h"

#include "Zyl2/Mox2/Helper/AttributeValueGetter.h"

namespace Zyl2 {
namespace Mox2 {
namespace Helper {

Zyl2Util::AttributeList Attributes::moxAttributeList(Mox2::Attributes const& attributes)
{
    return moxAttributeList(attributes.map());
}

Zyl2Util::AttributeList Attributes::moxAttributeList(AttributeMap const& attributes)
{
    Zyl2Util::AttributeList list;
    for (auto const& [name, value] : attributes)
        list.emplace_hint(list.end(), name, boost::apply_visitor(AttributeValueGetter(), value));
    return list;
}

} // namespace Helper
} // namespace Mox2
} // namespace Zyl2
