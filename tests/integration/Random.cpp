#include "integration/Random.h"

namespace Integration {

Random::Random(std::uint32_t seed) : engine_(seed) {}

Random::Random(std::uint8_t const* bytes, std::size_t count)
    : hasBytes_(true), next_(bytes), end_(bytes + count)
{}

bool Random::isExhausted() const
{
    return hasBytes_ && next_ == end_;
}

std::uint32_t Random::word()
{
    return hasBytes_ ? wordFromBytes(sizeof(std::uint32_t)) : static_cast<std::uint32_t>(engine_());
}

std::size_t Random::below(std::size_t end)
{
    constexpr std::size_t byteRange = 256;
    return (hasBytes_ && end <= byteRange ? wordFromBytes(1) : word()) % end;
}

// Small choices take few bytes, so that a changed byte changes one choice.
std::uint32_t Random::wordFromBytes(std::size_t size)
{
    std::uint32_t result = 0;
    for (; size > 0; --size)
        result = result << 8U | (next_ == end_ ? 0U : *next_++);
    return result;
}

bool Random::chance(unsigned int percent)
{
    return below(100) < percent;
}

float Random::number()
{
    return static_cast<float>(below(8001)) * 0.25F - 1000.0F;
}

} // namespace Integration
