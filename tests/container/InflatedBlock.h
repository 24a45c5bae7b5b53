#ifndef TESTS_CONTAINER_INFLATEDBLOCK_H
#define TESTS_CONTAINER_INFLATEDBLOCK_H

#include "ContainerReader.h"

#include <zlib.h>

#include <stdexcept>
#include <string>

namespace Support {

/// What a compressed block holds: a length and a zlib stream, whichever encoder made it.
inline std::string Inflated(std::string const& block)
{
    std::string content(WordAt(block, 0), '\0');
    // An empty string has no room for zlib to point to.
    Bytef nothing = 0;
    uLongf length = content.empty() ? sizeof nothing : content.size();
    auto* const target = content.empty() ? &nothing : reinterpret_cast<Bytef*>(content.data());
    auto const* const stream = reinterpret_cast<Bytef const*>(block.data()) + 4;
    if (uncompress(target, &length, stream, block.size() - 4) != Z_OK || length != content.size())
        throw std::runtime_error("a block does not inflate to its length");
    return content;
}

/// What was put into a slot's block.
inline std::string ContentOf(ReadSlot const& slot)
{
    constexpr unsigned int compressed = 1;
    return (slot.transformations & compressed) != 0 ? Inflated(slot.content) : slot.content;
}

} // namespace Support

#endif
