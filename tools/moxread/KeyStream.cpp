// The stream of a key: the contents of its blocks in slot order, without anything between them. A
// value may begin in one block and end in the next.
//
//   | content of the first block | content of the second | ...
//   0                            length of the first
//
// Values in it:
//
//   byte, flag    1 byte; a flag is 0 or 1
//   uint32        4 bytes, little-endian
//   uint64        8 bytes, little-endian
//   float         4 bytes, the IEEE 754 bits as a uint32
//   double        8 bytes, the IEEE 754 bits as a uint64
//   string        uint32 length, then that many characters

#include "moxread/KeyStream.h"

#include "moxread/FormatError.h"
#include "moxread/LittleEndian.h"
#include "moxread/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace MoxRead {

namespace {

constexpr std::size_t bufferSize = std::size_t{1} << 16U;

} // namespace

KeyStream::KeyStream(Container const& container, std::string key)
    : file_(container.file()), key_(std::move(key)), slots_(container.slotsOf(key_)),
      buffer_(bufferSize)
{
    for (Slot const& slot : slots_)
        length_ += BlockReader(file_, slot).length();
}

std::uint64_t KeyStream::position() const noexcept
{
    return position_;
}

std::uint64_t KeyStream::remaining() const noexcept
{
    return length_ - position_;
}

void KeyStream::readBytes(std::uint8_t* to, std::size_t count)
{
    require(count);
    std::size_t done = 0;
    while (done < count) {
        if (bufferPosition_ == bufferEnd_ && !fill())
            throw FormatError(placeOf(position_) + ": the blocks changed while they were read");
        std::size_t const part = std::min(count - done, bufferEnd_ - bufferPosition_);
        std::copy_n(buffer_.data() + bufferPosition_, part, to + done);
        bufferPosition_ += part;
        done += part;
        position_ += part;
    }
}

std::uint8_t KeyStream::readByte()
{
    std::uint8_t byte = 0;
    readBytes(&byte, 1);
    return byte;
}

std::uint32_t KeyStream::readUint32()
{
    std::array<std::uint8_t, 4> bytes = {};
    readBytes(bytes.data(), bytes.size());
    return decodeUint32(bytes.data());
}

std::uint64_t KeyStream::readUint64()
{
    std::array<std::uint8_t, 8> bytes = {};
    readBytes(bytes.data(), bytes.size());
    return decodeUint64(bytes.data());
}

float KeyStream::readFloat()
{
    return floatFromBits(readUint32());
}

double KeyStream::readDouble()
{
    return doubleFromBits(readUint64());
}

bool KeyStream::readFlag()
{
    std::uint64_t const start = position_;
    std::uint8_t const byte = readByte();
    if (byte > 1)
        throw FormatError(placeOf(start) + " is " + std::to_string(byte) + ", not a flag (0 or 1)");
    return byte == 1;
}

// The characters are taken in pieces, so that memory is asked for only as far as there is content.
std::string KeyStream::readString()
{
    std::uint32_t const length = readUint32();
    require(length);
    std::string result;
    std::array<std::uint8_t, 4096> piece = {};
    while (result.size() < length) {
        std::size_t const count = std::min<std::size_t>(piece.size(), length - result.size());
        readBytes(piece.data(), count);
        result.append(piece.begin(), piece.begin() + count);
    }
    return result;
}

std::uint32_t KeyStream::readCount(std::size_t leastSize, std::string const& what)
{
    std::uint64_t const start = position_;
    std::uint32_t const count = readUint32();
    if (count > remaining() / leastSize) {
        throw FormatError(placeOf(start) + ": " + what + " " + std::to_string(count) +
                          " is more than the remaining " + std::to_string(remaining()) +
                          " bytes can hold");
    }
    return count;
}

std::string KeyStream::placeOf(std::uint64_t position) const
{
    return "byte " + std::to_string(position) + " of " + quoted(key_);
}

void KeyStream::expectEnd()
{
    if (remaining() > 0) {
        throw FormatError(std::to_string(remaining()) + " bytes of " + quoted(key_) +
                          " belong to no record, from byte " + std::to_string(position_));
    }
    // Blocks without content are reached by nothing else, but have to be sound as well.
    while (fill()) {
    }
}

void KeyStream::require(std::uint64_t count) const
{
    if (count > remaining()) {
        throw FormatError(placeOf(position_) + ": " + std::to_string(count) +
                          " bytes are needed, " + std::to_string(remaining()) + " are left");
    }
}

// Returns false when no block has anything left.
bool KeyStream::fill()
{
    bufferPosition_ = 0;
    bufferEnd_ = 0;
    while (bufferEnd_ == 0) {
        if (block_ == nullptr) {
            if (nextSlot_ == slots_.size())
                return false;
            block_ = std::make_unique<BlockReader>(file_, slots_[nextSlot_++]);
        }
        bufferEnd_ = block_->read(buffer_.data(), buffer_.size());
        if (bufferEnd_ == 0)
            block_.reset();
    }
    return true;
}

} // namespace MoxRead
