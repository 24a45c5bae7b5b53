#include "moxread/Text.h"

namespace MoxRead {

namespace {

bool isControl(unsigned char byte)
{
    return byte < 0x20 || byte == 0x7F;
}

std::string hexEscape(unsigned char byte)
{
    static char const* const digits = "0123456789ABCDEF";
    return {'\\', 'x', digits[byte >> 4U], digits[byte & 0x0FU]};
}

} // namespace

std::string quoted(std::string const& text)
{
    std::string result = "\"";
    for (char const character : text) {
        auto const byte = static_cast<unsigned char>(character);
        if (isControl(byte)) {
            result += hexEscape(byte);
            continue;
        }
        if (character == '"' || character == '\\')
            result += '\\';
        result += character;
    }
    result += '"';
    return result;
}

} // namespace MoxRead
