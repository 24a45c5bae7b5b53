#include "integration/Values.h"

namespace Integration {

namespace {

std::uint32_t wordOf(Element element, std::uint32_t value)
{
    if (element == Element::Uint32)
        return value;
    auto const number = static_cast<float>(value);
    std::uint32_t word = 0;
    std::memcpy(&word, &number, sizeof word);
    return word;
}

} // namespace

Values Values::ascending(Element element, unsigned int width, std::size_t rows)
{
    Values values{element, width, {}};
    for (std::uint32_t value = 0; value < rows * width; ++value)
        values.words.push_back(wordOf(element, value));
    return values;
}

Values Values::anyBits(Random& random, Element element, unsigned int width, std::size_t rows)
{
    Values values{element, width, {}};
    for (std::size_t count = 0; count < rows * width; ++count)
        values.words.push_back(random.word());
    return values;
}

} // namespace Integration
