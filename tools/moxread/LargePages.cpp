#include "moxread/LargePages.h"

#include <cstdint>

#include <sys/mman.h>

namespace MoxRead {

namespace {

constexpr std::size_t largePage = std::size_t{2} << 20U;

} // namespace

void wishForLargePages(void* bytes, std::size_t size) noexcept
{
    std::size_t const behindBorder = reinterpret_cast<std::uintptr_t>(bytes) % largePage;
    std::size_t const skipped = (largePage - behindBorder) % largePage;
    if (size >= skipped + largePage)
        ::madvise(static_cast<std::uint8_t*>(bytes) + skipped,
                  (size - skipped) / largePage * largePage, MADV_HUGEPAGE);
}

} // namespace MoxRead
