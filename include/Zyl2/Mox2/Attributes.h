#ifndef ZYL2_MOX2_ATTRIBUTES_H
#define ZYL2_MOX2_ATTRIBUTES_H

#include <Zyl2/Export.h>

#include <string>
#include <type_traits>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

class AttributeMap;

/// Whether `Attributes::set` takes values of type `T`.
template <typename T>
struct IsAttributeScalar : std::false_type
{};
template <>
struct IsAttributeScalar<float> : std::true_type
{};
template <>
struct IsAttributeScalar<double> : std::true_type
{};
template <>
struct IsAttributeScalar<int> : std::true_type
{};
template <>
struct IsAttributeScalar<unsigned int> : std::true_type
{};
template <>
struct IsAttributeScalar<std::string> : std::true_type
{};
template <>
struct IsAttributeScalar<std::wstring> : std::true_type
{};
template <>
struct IsAttributeScalar<unsigned long> : std::true_type
{};
template <>
struct IsAttributeScalar<long> : std::true_type
{};
template <>
struct IsAttributeScalar<bool> : std::true_type
{};
template <>
struct IsAttributeScalar<unsigned char> : std::true_type
{};
template <>
struct IsAttributeScalar<signed char> : std::true_type
{};
template <>
struct IsAttributeScalar<unsigned short> : std::true_type
{};
template <>
struct IsAttributeScalar<short> : std::true_type
{};

template <typename T>
struct IsAttributeType : IsAttributeScalar<T>
{};
template <typename T>
struct IsAttributeType<std::vector<T>> : IsAttributeScalar<T>
{};

/// `void` when `Attributes::set` takes values of type `T`, no type otherwise.
template <typename T>
struct IfAttribute : std::enable_if<IsAttributeType<T>::value>
{};

/// Free named values that describe a node, a dataset or a step.
///
/// Of the types below, a model stores `float`, `double`, `int`, `unsigned int`, `long` (its low 32
/// bits) and strings (up to 256 bytes, up to the first zero byte); the other types are held here,
/// but the call that would store them fails with `Exception::InvalidArguments`.
///
/// \code
/// Attributes attributes;
/// attributes.set("Unit", "mm");
/// attributes.set("Time", 0.25f);
/// \endcode
class ZYL2_EXPORT Attributes
{
public:
    /// No attributes.
    Attributes();
    /// An independent copy.
    /// \param other stays as it is
    Attributes(Attributes const& other);
    /// Takes the other's entries.
    /// \param other stays as it is
    /// \return this object
    Attributes& operator=(Attributes const& other);
    ~Attributes();

    /// Inserts or overwrites the entry `name`. A `double` is narrowed to single precision.
    /// \param name  name of the attribute, any bytes
    /// \param value copied
    /// \tparam T one of the scalar types listed by `IsAttributeScalar`, or a `std::vector` of one
    template <typename T>
    typename IfAttribute<T>::type set(std::string const& name, T const& value);

    /// Inserts or overwrites the entry `name` with a string.
    /// \param name  name of the attribute, any bytes
    /// \param value terminated text, copied; must not be null
    void set(std::string const& name, char const* value);

    /// The entries, for the library's own use.
    AttributeMap const& map() const { return *map_; }
    /// A copy of entries, for the library's own use.
    /// \param entries stay as they are
    explicit Attributes(AttributeMap const& entries);

private:
    AttributeMap* map_;
};

/// Stored as the nearest `float`.
template <>
ZYL2_EXPORT void Attributes::set<double>(std::string const& name, double const& value);

} // namespace Mox2
} // namespace Zyl2

#endif
