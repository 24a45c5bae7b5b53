#ifndef ZYL2_MOX2_PROPERTYTYPE_H
#define ZYL2_MOX2_PROPERTYTYPE_H

namespace Zyl2 {
namespace Mox2 {

/// What `NodeProperties` can set on a node. Properties of one call are applied in ascending order
/// of these values, so `AmbientIntensity` overrides an `AmbientColor` given with it.
enum class PropertyType : unsigned int
{
    /// Group: 3 floats x, y, z.
    Translation = 0,
    /// Group: 4 floats, the axis x, y, z and the angle in radians.
    Rotation = 1,
    /// Group: 3 floats, factors along x, y, z.
    Scale = 2,
    /// Shape: 3 or 4 floats red, green, blue in 0..1; a fourth value is ignored.
    DiffuseColor = 3,
    /// Shape: 3 or 4 floats red, green, blue in 0..1; a fourth value is ignored.
    SpecularColor = 4,
    /// Shape: 3 floats red, green, blue in 0..1.
    EmissiveColor = 5,
    /// Shape: 3 floats red, green, blue in 0..1.
    AmbientColor = 6,
    /// Shape: one float, 0 (opaque) to 1.
    Transparency = 7,
    /// Shape: one float; the ambient colour becomes this times the diffuse colour.
    AmbientIntensity = 8,
    /// Shape: one float, 0 to 1.
    Shininess = 9,
    /// Reads a bool, which no property value can hold: setting it always fails.
    Unsupported = 10
};

} // namespace Mox2
} // namespace Zyl2

#endif
