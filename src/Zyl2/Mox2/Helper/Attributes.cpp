#include "Zyl2/Mox2/Helper/Attributes.h"

#include "Zyl2/Log/Statement.h"
#include "Zyl2/Mox2/Helper/AttributeValueGetter.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

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

void warn(char const* function, unsigned long line, std::string const& name,
          std::string const& whatIsKept)
{
    Log::warn("Zyl2/Mox2/Helper/Attributes", function, line, "Attribute \"", name,
              "\": ", whatIsKept);
}

/// What the file has no room for.
void warnOfLosses(std::string const& name, AttributeValue const& value)
{
    if (std::string const* const text = boost::get<std::string>(&value)) {
        std::size_t const kept = Zyl2Util::AttributeValue::FromText(*text).GetText().size();
        if (kept < text->size())
            warn(BOOST_CURRENT_FUNCTION, __LINE__, name,
                 Exception::sentence("of a text of ", text->size(), " bytes the first ", kept,
                                     " are kept"));
    } else if (long const* const number = boost::get<long>(&value)) {
        if (*number < std::numeric_limits<std::int32_t>::min() ||
            *number > std::numeric_limits<std::uint32_t>::max())
            warn(BOOST_CURRENT_FUNCTION, __LINE__, name,
                 Exception::sentence("of the number ", *number, " the low 32 bits are kept"));
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
    bool const isHeard = Log::hasLogSystem();
    for (auto const& [name, value] : attributes) {
        list.emplace_hint(list.end(), name, storedValue(name, value));
        if (isHeard)
            warnOfLosses(name, value);
    }
    return list;
}

} // namespace Helper
} // namespace Mox2
} // namespace Zyl2
