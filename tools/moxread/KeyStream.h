#ifndef MOXREAD_KEYSTREAM_H
#define MOXREAD_KEYSTREAM_H

#include "moxread/BlockReader.h"
#include "moxread/Container.h"
#include "moxread/Export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace MoxRead {

/// Reads the values of one key from front to end, as if all its blocks were a single one. Positions
/// count the bytes of the inflated blocks.
class MOXREAD_EXPORT KeyStream
{
public:
    KeyStream(Container const& container, std::string key);

    std::uint64_t position() const noexcept;
    std::uint64_t remaining() const noexcept;

    // Each of these raises FormatError when the stream ends within the value.

    void readBytes(std::uint8_t* to, std::size_t count);
    std::uint8_t readByte();
    std::uint32_t readUint32();
    std::uint64_t readUint64();
    float readFloat();
    double readDouble();
    /// Refuses a byte other than 0 and 1.
    bool readFlag();
    std::string readString();

    /// Reads a count of things that take at least `leastSize` bytes each, and refuses one that the
    /// rest of the stream cannot hold.
    std::uint32_t readCount(std::size_t leastSize, std::string const& what);

    /// Such as: byte 12 of "Mox Tree"
    std::string placeOf(std::uint64_t position) const;

    /// Refuses bytes that no record took, and reads what is left of the blocks to see that they are
    /// sound to their ends.
    void expectEnd();

private:
    void require(std::uint64_t count) const;
    bool fill();

    InputFile const& file_;
    std::string key_;
    std::vector<Slot> slots_;
    std::size_t nextSlot_ = 0;
    std::unique_ptr<BlockReader> block_;
    std::vector<std::uint8_t> buffer_;
    std::size_t bufferPosition_ = 0;
    std::size_t bufferEnd_ = 0;
    std::uint64_t position_ = 0;
    std::uint64_t length_ = 0;
};

} // namespace MoxRead

#endif
