#ifndef ZYL2_VARIANT_VISITOR_VALUEGETTER_H
#define ZYL2_VARIANT_VISITOR_VALUEGETTER_H

#include "Zyl2/Exception/Raise.h"

#include <boost/variant/static_visitor.hpp>

namespace Zyl2 {
namespace Variant {
namespace Visitor {

/// Pulls a value of exactly the type `ValT` out of a variant; nothing is converted.
template <typename ValT>
class ValueGetter : public boost::static_visitor<ValT>
{
public:
    ValT operator()(ValT const& value) const { return value; }

    /// \throws TemplateSpecializationNotDefined the variant holds another type
    template <typename AnyT>
    ValT operator()(AnyT const& /*value*/) const
    {
        Exception::raiseFrom(Exception::Sites::ValueGetter::OtherType, BOOST_CURRENT_FUNCTION);
    }
};

} // namespace Visitor
} // namespace Variant
} // namespace Zyl2

#endif
