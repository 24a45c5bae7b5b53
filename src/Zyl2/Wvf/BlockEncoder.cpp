#include "Zyl2/Wvf/BlockEncoder.h"

#include <zlib.h>

#include <array>

namespace Zyl2Wvf {

namespace {

std::optional<std::size_t> EncodeByZlib(unsigned char const* source, std::size_t length,
                                        unsigned char* destination, std::size_t capacity,
                                        int level) noexcept
{
    uLongf written = capacity;
    if (compress2(destination, &written, source, length, level) != Z_OK)
        return std::nullopt;
    return written;
}

std::uint32_t ChecksumByZlib(std::uint32_t before, unsigned char const* bytes,
                             std::size_t length) noexcept
{
    return static_cast<std::uint32_t>(crc32_z(before, bytes, length));
}

constexpr BlockEncoder Zlib{"zlib", EncodeByZlib, ChecksumByZlib};

/// Null stands for one that is missing.
std::array<BlockEncoder const*, 3> AllEncoders() noexcept
{
    return {&Zlib, LibdeflateEncoder(), IsalEncoder()};
}

} // namespace

BlockEncoder const& ZlibEncoder() noexcept
{
    return Zlib;
}

BlockEncoder const* FindEncoder(std::string_view name) noexcept
{
    for (BlockEncoder const* const encoder : AllEncoders())
        if (encoder != nullptr && name == encoder->name)
            return encoder;
    return nullptr;
}

std::string NamesOfEncoders()
{
    std::string names;
    for (BlockEncoder const* const encoder : AllEncoders())
        if (encoder != nullptr)
            names += (names.empty() ? "" : ", ") + std::string(encoder->name);
    return names;
}

} // namespace Zyl2Wvf
