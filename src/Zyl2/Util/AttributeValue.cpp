#include "Zyl2/Util/AttributeValue.h"

#include <cstring>

namespace Zyl2Util {

AttributeValue AttributeValue::FromInteger(std::uint32_t value)
{
    return AttributeValue(std::in_place_index<Integer>, value);
}

AttributeValue AttributeValue::FromFloat(float value)
{
    return AttributeValue(std::in_place_index<Float>, value);
}

AttributeValue AttributeValue::FromText(std::string const& value)
{
    return AttributeValue(std::in_place_index<Text>, value.c_str(),
                          strnlen(value.c_str(), MaximumTextLength));
}

AttributeValue AttributeValue::FromDouble(double value)
{
    return AttributeValue(std::in_place_index<Double>, value);
}

} // namespace Zyl2Util
