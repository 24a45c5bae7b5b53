#include "Zyl2/Wvf/BlockEncoder.h"

#include <zlib.h>

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

} // namespace

BlockEncoder const ZlibEncoder{"zlib", EncodeByZlib, ChecksumByZlib};

std::initializer_list<BlockEncoder const*> Encoders() noexcept
{
    static constexpr std::initializer_list<BlockEncoder const*> encoders{
        &ZlibEncoder,
#ifdef MOXWRITER_HAS_LIBDEFLATE
        &LibdeflateEncoder,
#endif
#ifdef MOXWRITER_HAS_ISAL
        &IsalEncoder,
#endif
    };
    return encoders;
}

BlockEncoder const* FindEncoder(std::string_view name) noexcept
{
    for (BlockEncoder const* const encoder : Encoders())
        if (name == encoder->name)
            return encoder;
    return nullptr;
}

std::string NamesOfEncoders()
{
    std::string names;
    for (BlockEncoder const* const encoder : Encoders())
        names += (names.empty() ? "" : ", ") + std::string(encoder->name);
    return names;
}

} // namespace Zyl2Wvf
