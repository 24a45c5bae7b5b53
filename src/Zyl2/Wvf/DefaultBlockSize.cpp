#include "Zyl2/Wvf/DefaultBlockSize.h"

#include <cstdlib>

namespace Zyl2Wvf {

std::optional<unsigned long> DefaultBlockSizeFromEnvironment()
{
    char const* const text = std::getenv("MOXWRITER_DEFAULT_BLOCK_SIZE");
    if (text == nullptr)
        return std::nullopt;
    return std::strtoul(text, nullptr, 10);
}

} // namespace Zyl2Wvf
