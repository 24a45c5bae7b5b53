#include "moxread/WholeInflater.h"

#include <isa-l/igzip_lib.h>

#include <cstdlib>
#include <limits>
#include <memory>

namespace MoxRead {

namespace {

struct Free
{
    void operator()(inflate_state* state) const noexcept { std::free(state); }
};

bool inflateByIsal(std::uint8_t const* stream, std::size_t size, std::uint8_t* to,
                   std::size_t length) noexcept
{
    // ISA-L counts bytes in 32 bits.
    if (size > std::numeric_limits<std::uint32_t>::max() ||
        length > std::numeric_limits<std::uint32_t>::max())
        return false;
    // The state is too large for the stacks of some threads.
    std::unique_ptr<inflate_state, Free> const state(
        static_cast<inflate_state*>(std::malloc(sizeof(inflate_state))));
    if (state == nullptr)
        return false;
    isal_inflate_init(state.get());
    state->crc_flag = ISAL_ZLIB;
    // ISA-L only reads through this pointer, though its header does not declare it as const.
    state->next_in = const_cast<std::uint8_t*>(stream);
    state->avail_in = static_cast<std::uint32_t>(size);
    state->next_out = to;
    state->avail_out = static_cast<std::uint32_t>(length);
    return isal_inflate_stateless(state.get()) == ISAL_DECOMP_OK &&
           state->block_state == ISAL_BLOCK_FINISH && state->avail_in == 0 &&
           state->read_in_length == 0 && state->avail_out == 0;
}

} // namespace

WholeInflater isalInflater() noexcept
{
    return inflateByIsal;
}

} // namespace MoxRead
