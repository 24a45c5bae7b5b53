#include "integration/Random.h"

namespace Integration {

Random::Random(std::uint32_t seed) : engine_(seed) {}

std::uint32_t Random::word()
{
    return static_cast<std::uint32_t>(engine_());
}

std::size_t Random::below(std::size_t end)
{
    return word() % end;
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
