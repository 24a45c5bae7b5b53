#ifndef MOXREAD_CONTAINER_H
#define MOXREAD_CONTAINER_H

#include "moxread/InputFile.h"
#include "moxread/Slot.h"

#include <cstdint>
#include <string>
#include <vector>

namespace MoxRead {

/// The outer layer of a file: header, index and blocks. Opening it checks all of them down to the
/// file's last byte, but looks into no block other than the index blocks.
class Container
{
public:
    /// Raises FormatError at the first rule that the file breaks.
    explicit Container(std::string const& path);

    InputFile const& file() const noexcept;
    /// All slots, index blocks and spare ones included.
    std::vector<Slot> const& slots() const noexcept;

    /// The slots of a key, in the order in which their blocks follow each other.
    std::vector<Slot> slotsOf(std::string const& key) const;

    /// The number of slots that hold a block, index blocks included.
    std::size_t blockCount() const;

    /// All bytes of a key: the contents of its blocks, inflated where they are compressed.
    std::vector<std::uint8_t> streamBytes(std::string const& key) const;

private:
    void readHeader() const;
    void readRootIndex();
    void readIndexChain();
    void addGroup(std::string const& place, std::uint64_t offset, std::uint32_t count);
    void addSlot(Slot slot);
    void checkGroupEnd(Slot const& last) const;
    void checkEnd() const;

    InputFile file_;
    std::vector<Slot> slots_;
};

} // namespace MoxRead

#endif
