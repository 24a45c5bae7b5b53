#ifndef ZYL2_MOX2_HELPER_ATTRIBUTEVALUEGETTER_H
#define ZYL2_MOX2_HELPER_ATTRIBUTEVALUEGETTER_H

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Util/AttributeValue.h"

#include <boost/variant/static_visitor.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mox2 {
namespace Helper {

/// Turns a host's attribute value into what a tree stores; most types can't be stored.
class AttributeValueGetter : public boost::static_visitor<Zyl2Util::AttributeValue>
{
public:
    result_type operator()(float value) const { return result_type::FromFloat(value); }
    result_type operator()(double value) const { return result_type::FromDouble(value); }
    result_type operator()(std::string const& value) const { return result_type::FromText(value); }
    result_type operator()(int value) const
    {
        return result_type::FromInteger(static_cast<std::uint32_t>(value));
    }
    result_type operator()(unsigned int value) const { return result_type::FromInteger(value); }
    /// Keeps the low 32 bits: the file has no wider integer.
    result_type operator()(long value) const
    {
        return result_type::FromInteger(static_cast<std::uint32_t>(value));
    }

    /// \throws InvalidArguments always
    template <typename T>
    result_type operator()(T const& /*value*/) const
    {
        Exception::raise(Exception::Sites::Attributes::UnsupportedValue);
    }

    /// \throws InvalidArguments always
    template <typename T>
    result_type operator()(std::vector<T> const& /*values*/) const
    {
        Exception::raise(Exception::Sites::Attributes::UnsupportedVector);
    }
};

} // namespace Helper
} // namespace Mox2
} // namespace Zyl2

#endif
