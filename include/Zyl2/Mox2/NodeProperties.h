#ifndef ZYL2_MOX2_NODEPROPERTIES_H
#define ZYL2_MOX2_NODEPROPERTIES_H

#include <Zyl2/Export.h>
#include <Zyl2/Mox2/PropertyType.h>

#include <string>
#include <type_traits>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

class PropertyMap;

/// Whether `NodeProperties::set` takes values of type `T`.
template <typename T>
struct IsPropertyType : std::false_type
{};
template <>
struct IsPropertyType<int> : std::true_type
{};
template <>
struct IsPropertyType<bool> : std::true_type
{};
template <>
struct IsPropertyType<float> : std::true_type
{};
template <>
struct IsPropertyType<double> : std::true_type
{};
template <>
struct IsPropertyType<std::string> : std::true_type
{};
template <>
struct IsPropertyType<std::vector<int>> : std::true_type
{};
template <>
struct IsPropertyType<std::vector<float>> : std::true_type
{};

/// `void` when `NodeProperties::set` takes values of type `T`, no type otherwise.
template <typename T>
struct IfProperty : std::enable_if<IsPropertyType<T>::value>
{};

/// The transform of a group, or the material of a shape, as `Model::setNodeData` takes it.
///
/// A property is read back in exactly the type that `PropertyType` names for it: a value set in
/// another type makes `Model::setNodeData` fail.
///
/// \code
/// NodeProperties properties;
/// properties.set(PropertyType::DiffuseColor, std::vector<float>{0.8f, 0.1f, 0.1f});
/// properties.set(PropertyType::Transparency, 0.5f);
/// \endcode
class ZYL2_EXPORT NodeProperties
{
public:
    /// No properties.
    NodeProperties();
    /// An independent copy.
    /// \param other stays as it is
    NodeProperties(NodeProperties const& other);
    /// Takes the other's entries.
    /// \param other stays as it is
    /// \return this object
    NodeProperties& operator=(NodeProperties const& other);
    ~NodeProperties();

    /// Inserts or overwrites the entry for `type`. A `bool` is held as `int` 0 or 1, a `double` is
    /// narrowed to single precision.
    /// \param type  which property
    /// \param value copied
    /// \tparam T one of the types listed by `IsPropertyType`
    template <typename T>
    typename IfProperty<T>::type set(PropertyType type, T const& value);

    /// Inserts or overwrites the entry for `type` with a string.
    /// \param type  which property
    /// \param value terminated text, copied; must not be null
    void set(PropertyType type, char const* value);

    /// The entries, for the library's own use.
    PropertyMap const& map() const { return *map_; }

private:
    PropertyMap* map_;
};

/// Held as `int` 0 or 1.
template <>
ZYL2_EXPORT void NodeProperties::set<bool>(PropertyType type, bool const& value);

/// Held as the nearest `float`.
template <>
ZYL2_EXPORT void NodeProperties::set<double>(PropertyType type, double const& value);

} // namespace Mox2
} // namespace Zyl2

#endif
