#ifndef TESTS_TREE_SAVEDFILE_H
#define TESTS_TREE_SAVEDFILE_H

#include "container/ContainerReader.h"
#include "container/TemporaryFile.h"

#include <zlib.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace Support {

/// The bytes that were put into a block that was saved.
inline std::string Plain(ReadSlot const& slot)
{
    if ((slot.transformations & 1U) == 0)
        return slot.content;
    std::string plain(WordAt(slot.content, 0), '\0');
    uLongf length = plain.size();
    if (uncompress(reinterpret_cast<Bytef*>(plain.data()), &length,
                   reinterpret_cast<Bytef const*>(slot.content.data()) + 4,
                   slot.content.size() - 4) != Z_OK ||
        length != plain.size())
        throw std::runtime_error("a block does not inflate to its length");
    return plain;
}

/// A file that was read back: its slots, and the bytes under a key.
class SavedFile
{
public:
    explicit SavedFile(std::string const& path) : slots_(ReadSlots(ReadFile(path))) {}

    std::vector<ReadSlot> Slots(std::string const& key) const
    {
        std::vector<ReadSlot> found;
        for (std::size_t const slot : SlotsOf(slots_, key))
            found.push_back(slots_[slot]);
        return found;
    }

    std::string Content(std::string const& key) const
    {
        std::string content;
        for (ReadSlot const& slot : Slots(key))
            content += Plain(slot);
        return content;
    }

private:
    std::vector<ReadSlot> slots_;
};

} // namespace Support

#endif
