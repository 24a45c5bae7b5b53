#ifndef TESTS_INTEGRATION_VALUES_H
#define TESTS_INTEGRATION_VALUES_H

#include "integration/Random.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace Integration {

enum class Element
{
    Float,
    Uint32
};

/// The values of a dataset, as the 32-bit words that they consist of, row after row.
struct Values
{
    Element element = Element::Float;
    unsigned int width = 1;
    std::vector<std::uint32_t> words;

    /// 0, 1, 2, ... as numbers of the element type.
    static Values ascending(Element element, unsigned int width, std::size_t rows);
    /// Any bits: of floats, not only numbers.
    static Values anyBits(Random& random, Element element, unsigned int width, std::size_t rows);

    std::size_t rows() const { return words.size() / width; }
    std::size_t byteCount() const { return words.size() * sizeof(std::uint32_t); }

    template <typename T>
    std::vector<T> as() const
    {
        std::vector<T> result(words.size());
        if (!words.empty())
            std::memcpy(result.data(), words.data(), byteCount());
        return result;
    }
};

} // namespace Integration

#endif
