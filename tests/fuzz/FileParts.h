#ifndef TESTS_FUZZ_FILEPARTS_H
#define TESTS_FUZZ_FILEPARTS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Fuzz {

/// One entry of the index as it stands in the file, and the bytes of its block.
struct Part
{
    /// 139 bytes.
    std::string entry;
    /// Empty for an index block: its content is the entries of the parts that follow.
    std::string block;

    std::string name() const;
    void rename(std::string const& name);
    std::uint32_t statedSize() const;
    void stateSize(std::uint32_t size);
    bool isCompressed() const;
    void setCompressed(bool compressed);
    bool isIndexBlock() const;
    bool isSpare() const;

    /// The content of the block; none when it is compressed and does not inflate.
    std::optional<std::string> content() const;
    /// Takes other content, compressed if the entry says so, and states its size.
    void setContent(std::string const& content);
};

/// A model file cut into pieces that can be changed one by one. Shares nothing with the reader, and
/// is content with much that the reader refuses.
class FileParts
{
public:
    /// None for a file whose index does not lead through it.
    static std::optional<FileParts> of(std::string const& file);

    std::string join() const;

    /// The first 20 bytes: signature, version, length and count of the root index.
    std::string head;
    std::vector<Part> parts;
    /// What follows the last block.
    std::string rest;
};

/// The number of bytes that a block's zlib stream gives before it ends or breaks.
std::size_t inflatedSize(std::string const& block);

/// The same for all compressed blocks of a file together.
std::size_t inflatedSizeOf(FileParts const& file);

} // namespace Fuzz

#endif
