// File: 20 bytes, 20 entries of 139 bytes, blocks. Entry: 1 id, 4 name width, 128 name, 4 size,
// 1 transformations, 1 reserved. Index block: 4 bytes count (200), 200 entries. Compressed block:
// 4 bytes length, zlib stream.

#include "FileParts.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <functional>
#include <stdexcept>

namespace Fuzz {

namespace {

constexpr std::size_t headSize = 20;
constexpr std::size_t entrySize = 139;
constexpr std::size_t nameOffset = 5;
constexpr std::size_t nameWidth = 128;
constexpr std::size_t sizeOffset = 133;
constexpr std::size_t transformationsOffset = 137;
constexpr std::size_t rootCount = 20;
constexpr std::size_t groupCount = 200;
constexpr std::size_t wordSize = 4;
constexpr std::size_t indexBlockSize = wordSize + groupCount * entrySize;
constexpr char const* indexName = "\x0BIndex Block ";
constexpr char const* spareName = "\x0B"
                                  "Empty Block ";

std::string encoded(std::uint32_t word)
{
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(word >> shift)));
    return bytes;
}

std::uint32_t decoded(std::string const& bytes, std::size_t offset)
{
    std::uint32_t word = 0;
    for (std::size_t i = wordSize; i-- > 0;)
        word = word << 8U | static_cast<unsigned char>(bytes.at(offset + i));
    return word;
}

using Sink = std::function<void(char const*, std::size_t)>;

/// \return whether the stream came to its end
bool inflateInto(std::string const& block, Sink const& sink)
{
    if (block.size() < wordSize)
        return false;
    z_stream stream = {};
    if (::inflateInit(&stream) != Z_OK)
        throw std::runtime_error("inflateInit");
    std::string input = block.substr(wordSize);
    std::array<char, 65536> piece;
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    int result = Z_OK;
    while (result == Z_OK) {
        stream.next_out = reinterpret_cast<Bytef*>(piece.data());
        stream.avail_out = static_cast<uInt>(piece.size());
        result = ::inflate(&stream, Z_NO_FLUSH);
        sink(piece.data(), piece.size() - stream.avail_out);
    }
    ::inflateEnd(&stream);
    return result == Z_STREAM_END;
}

std::string deflated(std::string const& content)
{
    uLongf size = ::compressBound(static_cast<uLong>(content.size()));
    std::string stream(size, '\0');
    int const result = ::compress2(reinterpret_cast<Bytef*>(stream.data()), &size,
                                   reinterpret_cast<Bytef const*>(content.data()),
                                   static_cast<uLong>(content.size()), 1);
    if (result != Z_OK)
        throw std::runtime_error("compress2");
    return encoded(static_cast<std::uint32_t>(content.size())) + stream.substr(0, size);
}

void addEntries(FileParts& file, std::string const& bytes, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        file.parts.push_back({bytes.substr(i * entrySize, entrySize), std::string()});
}

/// \return whether the block lies within the file
bool takeBlock(FileParts& file, std::size_t slot, std::string const& bytes, std::size_t& position)
{
    Part& part = file.parts[slot];
    std::size_t const size = part.statedSize();
    if (size > bytes.size() - position)
        return false;
    std::string const block = bytes.substr(position, size);
    position += size;
    bool const isGroupEnd = slot + 1 == file.parts.size();
    if (isGroupEnd && part.isIndexBlock() && size == indexBlockSize)
        addEntries(file, block.substr(wordSize), groupCount);
    else
        part.block = block;
    return true;
}

std::string entriesFrom(std::vector<Part> const& parts, std::size_t first, std::size_t count)
{
    std::string bytes;
    for (std::size_t i = first; i < std::min(first + count, parts.size()); ++i)
        bytes += parts[i].entry;
    return bytes;
}

} // namespace

std::string Part::name() const
{
    std::string const field = entry.substr(nameOffset, nameWidth);
    return field.substr(0, field.find('\0'));
}

void Part::rename(std::string const& name)
{
    std::string field = name;
    field.resize(nameWidth, '\0');
    entry.replace(nameOffset, nameWidth, field);
}

std::uint32_t Part::statedSize() const
{
    return decoded(entry, sizeOffset);
}

void Part::stateSize(std::uint32_t size)
{
    entry.replace(sizeOffset, wordSize, encoded(size));
}

bool Part::isCompressed() const
{
    return (static_cast<unsigned char>(entry[transformationsOffset]) & 1U) != 0;
}

void Part::setCompressed(bool compressed)
{
    unsigned const others = static_cast<unsigned char>(entry[transformationsOffset]) & 0xFEU;
    entry[transformationsOffset] =
        static_cast<char>(static_cast<unsigned char>(others | (compressed ? 1U : 0U)));
}

bool Part::isIndexBlock() const
{
    return name() == indexName;
}

bool Part::isSpare() const
{
    return name() == spareName;
}

std::optional<std::string> Part::content() const
{
    if (!isCompressed())
        return block;
    std::string result;
    bool const isWhole = inflateInto(
        block, [&](char const* bytes, std::size_t size) { result.append(bytes, size); });
    return isWhole ? std::make_optional(result) : std::nullopt;
}

void Part::setContent(std::string const& content)
{
    block = isCompressed() ? deflated(content) : content;
    stateSize(static_cast<std::uint32_t>(block.size()));
}

std::optional<FileParts> FileParts::of(std::string const& file)
{
    if (file.size() < headSize + rootCount * entrySize)
        return std::nullopt;
    FileParts result;
    result.head = file.substr(0, headSize);
    addEntries(result, file.substr(headSize), rootCount);
    std::size_t position = headSize + rootCount * entrySize;
    for (std::size_t slot = 0; slot < result.parts.size(); ++slot)
        if (!takeBlock(result, slot, file, position))
            return std::nullopt;
    result.rest = file.substr(position);
    return result;
}

std::string FileParts::join() const
{
    std::string bytes = head + entriesFrom(parts, 0, rootCount);
    std::size_t groupEnd = rootCount;
    for (std::size_t slot = 0; slot < parts.size(); ++slot) {
        bool const leadsOn = slot + 1 == groupEnd && groupEnd < parts.size();
        if (leadsOn) {
            bytes += encoded(groupCount) + entriesFrom(parts, groupEnd, groupCount);
            groupEnd += groupCount;
        } else {
            bytes += parts[slot].block;
        }
    }
    return bytes + rest;
}

std::size_t inflatedSize(std::string const& block)
{
    std::size_t size = 0;
    inflateInto(block, [&](char const* /*bytes*/, std::size_t count) { size += count; });
    return size;
}

std::size_t inflatedSizeOf(FileParts const& file)
{
    std::size_t size = 0;
    for (Part const& part : file.parts)
        if (part.isCompressed())
            size += inflatedSize(part.block);
    return size;
}

} // namespace Fuzz
