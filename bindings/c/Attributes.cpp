#include "Handle.h"
#include "Text.h"

using Zyl2::C::contentOf;
using Zyl2::C::guarded;
using Zyl2::C::textFrom;

namespace {

template <typename T>
mox_status set(mox_attributes* attributes, char const* name, size_t length, T value)
{
    return guarded([=] { contentOf(attributes).set(textFrom(name, length, "name"), value); });
}

} // namespace

mox_status mox_attributes_create(mox_attributes** attributes)
{
    return Zyl2::C::create(attributes);
}

mox_status mox_attributes_destroy(mox_attributes* attributes)
{
    return Zyl2::C::destroy(attributes);
}

mox_status mox_attributes_clear(mox_attributes* attributes)
{
    return guarded([=] { contentOf(attributes) = Zyl2::Mox2::Attributes(); });
}

mox_status mox_attributes_set_float(mox_attributes* attributes, char const* name,
                                    size_t name_length, float value)
{
    return set(attributes, name, name_length, value);
}

mox_status mox_attributes_set_double(mox_attributes* attributes, char const* name,
                                     size_t name_length, double value)
{
    return set(attributes, name, name_length, value);
}

mox_status mox_attributes_set_int32(mox_attributes* attributes, char const* name,
                                    size_t name_length, int32_t value)
{
    return set<int>(attributes, name, name_length, value);
}

mox_status mox_attributes_set_uint32(mox_attributes* attributes, char const* name,
                                     size_t name_length, uint32_t value)
{
    return set<unsigned int>(attributes, name, name_length, value);
}

mox_status mox_attributes_set_int64(mox_attributes* attributes, char const* name,
                                    size_t name_length, int64_t value)
{
    return set<long>(attributes, name, name_length, static_cast<long>(value));
}

mox_status mox_attributes_set_string(mox_attributes* attributes, char const* name,
                                     size_t name_length, char const* value, size_t value_length)
{
    return guarded([=] {
        auto& content = contentOf(attributes);
        content.set(textFrom(name, name_length, "name"), textFrom(value, value_length, "value"));
    });
}
