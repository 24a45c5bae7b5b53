#include "integration/AttributeSet.h"

#include <cstdint>

namespace Integration {

namespace {

constexpr std::size_t longestText = 256;

} // namespace

void AttributeSet::set(std::string const& name, float value)
{
    host_.set(name, value);
    stored_[name] = value;
}

void AttributeSet::set(std::string const& name, double value)
{
    host_.set(name, value);
    stored_[name] = static_cast<float>(value);
}

void AttributeSet::set(std::string const& name, int value)
{
    host_.set(name, value);
    stored_[name] = static_cast<std::uint32_t>(value);
}

void AttributeSet::set(std::string const& name, unsigned int value)
{
    host_.set(name, value);
    stored_[name] = std::uint32_t{value};
}

void AttributeSet::set(std::string const& name, long value)
{
    host_.set(name, value);
    stored_[name] = static_cast<std::uint32_t>(static_cast<std::uint64_t>(value) & 0xFFFFFFFFU);
}

void AttributeSet::set(std::string const& name, std::string const& value)
{
    host_.set(name, value);
    stored_[name] = value.substr(0, value.find('\0')).substr(0, longestText);
}

void AttributeSet::set(std::string const& name, char const* value)
{
    host_.set(name, value);
    stored_[name] = std::string(value).substr(0, longestText);
}

} // namespace Integration
