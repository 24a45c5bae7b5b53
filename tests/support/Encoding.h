#ifndef TESTS_SUPPORT_ENCODING_H
#define TESTS_SUPPORT_ENCODING_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

// Values as they stand in the file, written down independently of the code that is tested.

namespace Support {

/// The lowest byte first.
inline std::string LittleEndian(std::uint64_t value, std::size_t size)
{
    std::string bytes;
    for (std::size_t byte = 0; byte < size; ++byte, value >>= 8U)
        bytes.push_back(static_cast<char>(value & 0xFFU));
    return bytes;
}

inline std::string OneByte(unsigned int value)
{
    return LittleEndian(value, 1);
}

inline std::string Count(std::uint32_t value)
{
    return LittleEndian(value, 4);
}

inline std::string LongWord(std::uint64_t value)
{
    return LittleEndian(value, 8);
}

inline std::string Float(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return LittleEndian(bits, sizeof bits);
}

inline std::string Double(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return LittleEndian(bits, sizeof bits);
}

/// Length and characters.
inline std::string Text(std::string_view text)
{
    return Count(static_cast<std::uint32_t>(text.size())) + std::string(text);
}

/// An attribute list without attributes: six empty vectors.
inline std::string NoAttributes()
{
    return std::string(24, '\0');
}

} // namespace Support

#endif
