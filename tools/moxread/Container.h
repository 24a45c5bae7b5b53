#ifndef MOXREAD_CONTAINER_H
#define MOXREAD_CONTAINER_H

#include "moxread/Export.h"
#include "moxread/InputFile.h"
#include "moxread/ReadOptions.h"
#include "moxread/Slot.h"
#include "moxread/WholeInflater.h"

#include <cstdint>
#include <string>
#include <vector>

namespace MoxRead {

/// The outer layer of a file: header, index and blocks. Opening it checks all of them down to the
/// file's last byte, but looks into no block other than the index blocks.
class MOXREAD_EXPORT Container
{
public:
    /// Raises FormatError at the first rule that the file breaks.
    /// \throws std::invalid_argument the reader was built without the inflater
    explicit Container(std::string const& path, ReadOptions const& options = ReadOptions());

    InputFile const& file() const noexcept;
    /// What inflates whole blocks.
    WholeInflater inflater() const noexcept;
    /// How many threads may do so.
    unsigned int threads() const noexcept;
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

    WholeInflater inflater_;
    unsigned int threads_;
    InputFile file_;
    std::vector<Slot> slots_;
};

} // namespace MoxRead

#endif
