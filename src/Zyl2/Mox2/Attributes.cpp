#include <Zyl2/Mox2/Attributes.h>

#include "Zyl2/Mox2/AttributeMap.h"

namespace Zyl2 {
namespace Mox2 {

Attributes::Attributes() : map_(new AttributeMap) {}

Attributes::Attributes(Attributes const& other) : map_(new AttributeMap(*other.map_)) {}

Attributes::Attributes(AttributeMap const& entries) : map_(new AttributeMap(entries)) {}

Attributes& Attributes::operator=(Attributes const& other)
{
    if (this != &other)
        *map_ = *other.map_;
    return *this;
}

Attributes::~Attributes()
{
    delete map_;
}

template <typename T>
typename IfAttribute<T>::type Attributes::set(std::string const& name, T const& value)
{
    AttributeValue stored(value);
    (*map_)[name].swap(stored);
}

template <>
void Attributes::set<double>(std::string const& name, double const& value)
{
    set(name, static_cast<float>(value));
}

void Attributes::set(std::string const& name, char const* value)
{
    set(name, std::string(value));
}

template ZYL2_EXPORT void Attributes::set(std::string const&, float const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, int const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, unsigned int const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::string const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::wstring const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, unsigned long const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, long const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, bool const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, unsigned char const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, signed char const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, unsigned short const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, short const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<float> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<int> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<unsigned int> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<std::string> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<std::wstring> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<double> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<unsigned long> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<long> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<bool> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<unsigned char> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<signed char> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<unsigned short> const&);
template ZYL2_EXPORT void Attributes::set(std::string const&, std::vector<short> const&);

} // namespace Mox2
} // namespace Zyl2
