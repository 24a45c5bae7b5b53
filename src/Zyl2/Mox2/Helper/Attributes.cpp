#include "Zyl2/Mox2/Helper/Attributes.h"

#include "Zyl2/Mox2/Helper/AttributeValueGetter.h"

#include <array>
#include <cstddef>

namespace Zyl2 {
namespace Mox2 {
namespace Helper {

namespace {

// By the index of a value's alternative.
constexpr std::array<char const*, 26> typeNames{"float",
                                                "std::vector<float>",
                                                "int",
                                                "std::vector<int>",
                                                "unsigned int",
                                                "std::vector<unsigned int>",
                                                "std::string",
                                                "std::vector<std::string>",
                                                "std::wstring",
                                                "std::vector<std::wstring>",
                                                "double",
                                                "std::vector<double>",
                                                "unsigned long",
                                                "std::vector<unsigned long>",
                                                "long",
                                                "std::vector<long>",
                                                "bool",
                                                "std::vector<bool>",
                                                "unsigned char",
                                                "std::vector<unsigned char>",
                                                "signed char",
                                                "std::vector<signed char>",
                                                "unsigned short",
                                                "std::vector<unsigned short>",
                                                "short",
                                                "std::vector<short>"};

Zyl2Util::AttributeValue storedValue(std::string const& name, AttributeValue const& value)
{
    try {
        return boost::apply_visitor(AttributeValueGetter(), value);
    } catch (Exception::Exception const& failure) {
        Exception::attachDetail(
            failure, Exception::sentence("attribute \"", name, "\" is a ",
                                         typeNames[static_cast<std::size_t>(value.which())],
                                         ", which can't be stored"));
        throw;
    }
}

} // namespace

Zyl2Util::AttributeList Attributes::moxAttributeList(Mox2::Attributes const& attributes)
{
    return moxAttributeList(attributes.map());
}

Zyl2Util::AttributeList Attributes::moxAttributeList(AttributeMap const& attributes)
{
    Zyl2Util::AttributeList list;
    for (auto const& [name, value] : attributes)
        list.emplace_hint(list.end(), name, storedValue(name, value));
    return list;
}

} // namespace Helper
} // namespace Mox2
} // namespace Zyl2
