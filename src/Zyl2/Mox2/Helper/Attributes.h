#ifndef ZYL2_MOX2_HELPER_ATTRIBUTES_H
#define ZYL2_MOX2_HELPER_ATTRIBUTES_H

#include <Zyl2/Mox2/Attributes.h>

#include "Zyl2/Mox2/AttributeMap.h"
#include "Zyl2/Util/AttributeList.h"

namespace Zyl2 {
namespace Mox2 {
namespace Helper {

/// Turns a host's attributes into what a tree stores.
class Attributes
{
public:
    /// \throws InvalidArguments a value of a type that can't be stored
    static Zyl2Util::AttributeList moxAttributeList(Mox2::Attributes const& attributes);
    static Zyl2Util::AttributeList moxAttributeList(AttributeMap const& attributes);
};

} // namespace Helper
} // namespace Mox2
} // namespace Zyl2

#endif
