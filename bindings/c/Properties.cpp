#include "Handle.h"
#include "Text.h"

using Zyl2::C::contentOf;
using Zyl2::C::guarded;
using Zyl2::Mox2::PropertyType;

static_assert(MOX_TRANSLATION == static_cast<int>(PropertyType::Translation));
static_assert(MOX_ROTATION == static_cast<int>(PropertyType::Rotation));
static_assert(MOX_SCALE == static_cast<int>(PropertyType::Scale));
static_assert(MOX_DIFFUSE_COLOR == static_cast<int>(PropertyType::DiffuseColor));
static_assert(MOX_SPECULAR_COLOR == static_cast<int>(PropertyType::SpecularColor));
static_assert(MOX_EMISSIVE_COLOR == static_cast<int>(PropertyType::EmissiveColor));
static_assert(MOX_AMBIENT_COLOR == static_cast<int>(PropertyType::AmbientColor));
static_assert(MOX_TRANSPARENCY == static_cast<int>(PropertyType::Transparency));
static_assert(MOX_AMBIENT_INTENSITY == static_cast<int>(PropertyType::AmbientIntensity));
static_assert(MOX_SHININESS == static_cast<int>(PropertyType::Shininess));
static_assert(MOX_UNSUPPORTED == static_cast<int>(PropertyType::Unsupported));

namespace {

template <typename T>
mox_status set(mox_properties* properties, mox_property_type type, T value)
{
    return guarded([=] { contentOf(properties).set(static_cast<PropertyType>(type), value); });
}

template <typename T>
mox_status setArray(mox_properties* properties, mox_property_type type, T const* values,
                    size_t count)
{
    return guarded([=] {
        auto& content = contentOf(properties);
        if (values == nullptr && count != 0)
            Zyl2::C::refuse("the values are null");
        std::vector<T> copy;
        copy.reserve(count);
        copy.insert(copy.end(), values, values + count);
        content.set(static_cast<PropertyType>(type), copy);
    });
}

} // namespace

mox_status mox_properties_create(mox_properties** properties)
{
    return Zyl2::C::create(properties);
}

mox_status mox_properties_destroy(mox_properties* properties)
{
    return Zyl2::C::destroy(properties);
}

mox_status mox_properties_clear(mox_properties* properties)
{
    return guarded([=] { contentOf(properties) = Zyl2::Mox2::NodeProperties(); });
}

mox_status mox_properties_set_float(mox_properties* properties, mox_property_type type, float value)
{
    return set(properties, type, value);
}

mox_status mox_properties_set_double(mox_properties* properties, mox_property_type type,
                                     double value)
{
    return set(properties, type, value);
}

mox_status mox_properties_set_floats(mox_properties* properties, mox_property_type type,
                                     float const* values, size_t count)
{
    return setArray(properties, type, values, count);
}

mox_status mox_properties_set_int32(mox_properties* properties, mox_property_type type,
                                    int32_t value)
{
    return set<int>(properties, type, value);
}

mox_status mox_properties_set_bool(mox_properties* properties, mox_property_type type, int value)
{
    return set(properties, type, value != 0);
}

mox_status mox_properties_set_int32s(mox_properties* properties, mox_property_type type,
                                     int32_t const* values, size_t count)
{
    return setArray<int>(properties, type, values, count);
}

mox_status mox_properties_set_string(mox_properties* properties, mox_property_type type,
                                     char const* value, size_t length)
{
    return guarded([=] {
        auto& content = contentOf(properties);
        content.set(static_cast<PropertyType>(type), Zyl2::C::textFrom(value, length, "value"));
    });
}
