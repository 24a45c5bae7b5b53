#ifndef TESTS_CONTAINER_BYTES_H
#define TESTS_CONTAINER_BYTES_H

#include "Zyl2/Wvf/Block.h"

#include <cstdint>
#include <string>

// Expected bytes, written down independently of the code that is tested.

namespace Support {

/// Bytes from their hexadecimal notation: "89 57 56 46".
inline std::string Hex(std::string const& notation)
{
    std::string bytes;
    for (std::size_t at = 0; at + 1 < notation.size(); at += 3)
        bytes.push_back(static_cast<char>(std::stoi(notation.substr(at, 2), nullptr, 16)));
    return bytes;
}

inline std::string Zeros(std::size_t count)
{
    return std::string(count, '\0');
}

/// Four bytes, the lowest first.
inline std::string Word(std::uint32_t value)
{
    std::string bytes;
    for (int byte = 0; byte < 4; ++byte, value >>= 8U)
        bytes.push_back(static_cast<char>(value & 0xFFU));
    return bytes;
}

/// One index entry of 139 bytes.
inline std::string Entry(unsigned int id, std::string const& name, std::uint32_t size,
                         unsigned int transformations)
{
    std::string bytes;
    bytes.push_back(static_cast<char>(id));
    bytes += Hex("80 00 00 00");
    bytes += name + Zeros(128 - name.size());
    bytes += Word(size);
    bytes.push_back(static_cast<char>(transformations));
    bytes.push_back('\0');
    return bytes;
}

/// The entry of a slot that nothing was put into.
inline std::string SpareEntry(unsigned int id)
{
    return Entry(id, Hex("0B 45 6D 70 74 79 20 42 6C 6F 63 6B 20"), 0, 0);
}

inline std::string SpareEntries(unsigned int firstId, unsigned int lastId)
{
    std::string bytes;
    for (unsigned int id = firstId; id <= lastId; ++id)
        bytes += SpareEntry(id & 0xFFU);
    return bytes;
}

inline std::string Content(Zyl2Wvf::Block const& block)
{
    return block.GetLength() == 0
               ? std::string()
               : std::string(reinterpret_cast<char const*>(block.GetData()), block.GetLength());
}

} // namespace Support

#endif
