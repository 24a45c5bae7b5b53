#ifndef TESTS_CONTAINER_CONTAINERREADER_H
#define TESTS_CONTAINER_CONTAINERREADER_H

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

// Finds the blocks of a container file as any reader does: by the root index, the chain of index
// blocks, and sums of sizes. Uses nothing of the code that is tested.

namespace Support {

struct ReadSlot
{
    unsigned int id;
    std::string name;
    std::uint32_t size;
    unsigned int transformations;
    std::size_t offset;
    std::string content;
};

inline std::uint32_t WordAt(std::string const& bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t byte = 4; byte > 0; --byte)
        value = value << 8U | static_cast<unsigned char>(bytes.at(at + byte - 1));
    return value;
}

inline ReadSlot ReadEntry(std::string const& table, std::size_t at)
{
    std::string const field = table.substr(at + 5, 128);
    return {static_cast<unsigned char>(table.at(at)),
            field.substr(0, field.find('\0')),
            WordAt(table, at + 133),
            static_cast<unsigned char>(table.at(at + 137)),
            0,
            ""};
}

inline void ReadTable(std::string const& table, std::vector<ReadSlot>& slots)
{
    std::uint32_t const count = WordAt(table, 0);
    if (table.size() != 4 + std::size_t(count) * 139)
        throw std::runtime_error("a table has another size than its entries");
    for (std::size_t entry = 0; entry < count; ++entry)
        slots.push_back(ReadEntry(table, 4 + entry * 139));
}

/// All slots in order. The file has to be used up to its last byte.
inline std::vector<ReadSlot> ReadSlots(std::string const& file)
{
    std::vector<ReadSlot> slots;
    if (WordAt(file, 12) != 2784)
        throw std::runtime_error("the root index has another size");
    ReadTable(file.substr(16, 2784), slots);
    std::size_t offset = 2800;
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        slots[slot].offset = offset;
        slots[slot].content = file.substr(offset, slots[slot].size);
        offset += slots[slot].size;
        if (slots[slot].name == "\x0bIndex Block ")
            ReadTable(std::string(slots[slot].content), slots);
    }
    if (offset != file.size())
        throw std::runtime_error("the sizes do not add up to the file");
    return slots;
}

/// Numbers of the slots that bear the name.
inline std::vector<std::size_t> SlotsOf(std::vector<ReadSlot> const& slots, std::string const& name)
{
    std::vector<std::size_t> numbers;
    for (std::size_t slot = 0; slot < slots.size(); ++slot)
        if (slots[slot].name == name)
            numbers.push_back(slot);
    return numbers;
}

} // namespace Support

#endif
