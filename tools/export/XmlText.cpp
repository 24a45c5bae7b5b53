#include "XmlText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace Export {

namespace {

struct Sequence
{
    std::size_t length;
    std::uint32_t first;
    std::uint32_t least;
};

// How the first byte says how many belong together, and what the least number is that needs them.
Sequence sequenceFrom(unsigned char byte)
{
    if (byte < 0x80)
        return {1, byte, 0};
    if ((byte & 0xE0U) == 0xC0)
        return {2, byte & 0x1FU, 0x80};
    if ((byte & 0xF0U) == 0xE0)
        return {3, byte & 0x0FU, 0x800};
    if ((byte & 0xF8U) == 0xF0)
        return {4, byte & 0x07U, 0x10000};
    return {0, 0, 0};
}

bool isXmlCharacter(std::uint32_t code)
{
    bool const isControl = code < 0x20 && code != '\t' && code != '\n' && code != '\r';
    bool const isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return !isControl && !isSurrogate && code != 0xFFFE && code != 0xFFFF && code <= 0x10FFFF;
}

// The length of the character that begins there, 0 if there is none.
std::size_t characterAt(std::string const& text, std::size_t position)
{
    Sequence const sequence = sequenceFrom(static_cast<unsigned char>(text[position]));
    if (sequence.length == 0 || sequence.length > text.size() - position)
        return 0;
    std::uint32_t code = sequence.first;
    for (std::size_t i = 1; i < sequence.length; ++i) {
        auto const byte = static_cast<unsigned char>(text[position + i]);
        if ((byte & 0xC0U) != 0x80)
            return 0;
        code = code << 6U | (byte & 0x3FU);
    }
    return code >= sequence.least && isXmlCharacter(code) ? sequence.length : 0;
}

} // namespace

std::string xmlText(std::string const& text)
{
    std::string result;
    for (std::size_t position = 0; position < text.size();) {
        std::size_t const length = characterAt(text, position);
        result += length == 0 ? "?" : text.substr(position, length);
        position += std::max<std::size_t>(length, 1);
    }
    return result;
}

} // namespace Export
