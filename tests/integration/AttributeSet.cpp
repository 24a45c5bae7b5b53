#include "integration/AttributeSet.h"

#include <array>
#include <cstdint>
#include <vector>

namespace Integration {

namespace {

constexpr std::size_t longestText = 256;

using AttributeSetter = void (*)(Zyl2::Mox2::Attributes&, std::string const&);

template <typename T>
void setDefault(Zyl2::Mox2::Attributes& attributes, std::string const& name)
{
    attributes.set(name, T());
}

template <typename T>
void setVector(Zyl2::Mox2::Attributes& attributes, std::string const& name)
{
    attributes.set(name, std::vector<T>(2));
}

constexpr std::array<AttributeSetter, 20> unstorableSetters{
    setDefault<std::wstring>,  setDefault<unsigned long>, setDefault<bool>,
    setDefault<unsigned char>, setDefault<signed char>,   setDefault<unsigned short>,
    setDefault<short>,         setVector<float>,          setVector<int>,
    setVector<unsigned int>,   setVector<std::string>,    setVector<std::wstring>,
    setVector<double>,         setVector<unsigned long>,  setVector<long>,
    setVector<bool>,           setVector<unsigned char>,  setVector<signed char>,
    setVector<unsigned short>, setVector<short>};

} // namespace

std::size_t AttributeSet::unstorableKinds()
{
    return unstorableSetters.size();
}

void AttributeSet::setUnstorable(std::string const& name, std::size_t kind)
{
    unstorableSetters.at(kind)(host_, name);
    stored_.erase(name);
    unstorable_.insert(name);
}

template <typename T>
void AttributeSet::store(std::string const& name, T const& value)
{
    stored_[name] = value;
    unstorable_.erase(name);
}

void AttributeSet::set(std::string const& name, float value)
{
    host_.set(name, value);
    store(name, value);
}

void AttributeSet::set(std::string const& name, double value)
{
    host_.set(name, value);
    store(name, static_cast<float>(value));
}

void AttributeSet::set(std::string const& name, int value)
{
    host_.set(name, value);
    store(name, static_cast<std::uint32_t>(value));
}

void AttributeSet::set(std::string const& name, unsigned int value)
{
    host_.set(name, value);
    store(name, std::uint32_t{value});
}

void AttributeSet::set(std::string const& name, long value)
{
    host_.set(name, value);
    store(name, static_cast<std::uint32_t>(static_cast<std::uint64_t>(value) & 0xFFFFFFFFU));
}

void AttributeSet::set(std::string const& name, std::string const& value)
{
    host_.set(name, value);
    store(name, value.substr(0, value.find('\0')).substr(0, longestText));
}

void AttributeSet::set(std::string const& name, char const* value)
{
    host_.set(name, value);
    store(name, std::string(value).substr(0, longestText));
}

} // namespace Integration
