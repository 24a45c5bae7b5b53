#include "Zyl2/Wvf/BlockEncoder.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace Zyl2Wvf {

namespace {

struct Free
{
    void operator()(void* memory) const noexcept { std::free(memory); }
};

template <typename T>
using Memory = std::unique_ptr<T, Free>;

/// Zeroed memory, or null.
template <typename T>
Memory<T> ZeroedMemory(std::size_t size)
{
    return Memory<T>(static_cast<T*>(std::calloc(1, size)));
}

/// The fastest level that looks for matches with tables made for the data. The address of the
/// stream finds its way into a hash there, so that now and then, at another address, another match
/// is found: what a block inflates to is always the same, how it is expressed is not.
constexpr std::uint32_t Level = 1;

/// With a larger workspace it changes its tables less often: long blocks gain some speed. Beyond
/// this the gain is not worth the memory.
std::uint32_t WorkspaceSizeFor(std::size_t length)
{
    constexpr std::size_t longBlock = 1048576;
    constexpr std::uint32_t longWorkspace =
        ISAL_DEF_LVL1_REQ + ISAL_DEF_LVL1_TOKEN_SIZE * 96 * IGZIP_K;
    return length < longBlock ? ISAL_DEF_LVL1_DEFAULT : longWorkspace;
}

/// The encoder counts its bytes in 32 bits.
std::uint32_t Limited(std::size_t count)
{
    return static_cast<std::uint32_t>(std::min<std::size_t>(count, UINT32_MAX));
}

std::optional<std::size_t> EncodeByIsal(unsigned char const* source, std::size_t length,
                                        unsigned char* destination, std::size_t capacity,
                                        int level) noexcept
{
    // Level 0, which stores, and invalid levels are left to zlib.
    if (level < 1 || level > 9 || length > UINT32_MAX)
        return std::nullopt;
    std::uint32_t const workspaceSize = WorkspaceSizeFor(length);
    auto const workspace = ZeroedMemory<unsigned char>(workspaceSize);
    // The state is too large for the stacks of some hosts' threads.
    auto const stream = ZeroedMemory<isal_zstream>(sizeof(isal_zstream));
    if (workspace == nullptr || stream == nullptr)
        return std::nullopt;
    isal_deflate_stateless_init(stream.get());
    stream->level = Level;
    stream->level_buf = workspace.get();
    stream->level_buf_size = workspaceSize;
    stream->gzip_flag = IGZIP_ZLIB;
    stream->end_of_stream = 1;
    // ISA-L only reads through this pointer, though its header does not declare it as const.
    stream->next_in = const_cast<unsigned char*>(source);
    stream->avail_in = static_cast<std::uint32_t>(length);
    stream->next_out = destination;
    stream->avail_out = Limited(capacity);
    if (isal_deflate_stateless(stream.get()) != COMP_OK || stream->avail_in != 0)
        return std::nullopt;
    return static_cast<std::size_t>(stream->next_out - destination);
}

std::uint32_t ChecksumByIsal(std::uint32_t before, unsigned char const* bytes,
                             std::size_t length) noexcept
{
    return crc32_gzip_refl(before, bytes, length);
}

} // namespace

BlockEncoder const IsalEncoder{"isal", EncodeByIsal, ChecksumByIsal};

} // namespace Zyl2Wvf
