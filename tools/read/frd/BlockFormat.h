#ifndef READ_FRD_BLOCKFORMAT_H
#define READ_FRD_BLOCKFORMAT_H

#include "ByteStream.h"

#include <cstdint>

namespace Frd {

/// How the records of one block are written; every block says it for itself.
class BlockFormat
{
public:
    /// \param number the file's number: 0 short lines, 1 long lines, 2 binary with floats, 3 binary
    ///               with doubles; any other is refused
    BlockFormat(ByteStream const& stream, std::int64_t number);

    bool isBinary() const { return number_ >= 2; }

    /// Width of a node's or element's number in a line.
    std::size_t numberWidth() const { return number_ == 0 ? 5 : 10; }

    /// How many nodes of an element a line holds.
    std::size_t nodesPerLine() const { return number_ == 0 ? 15 : 10; }

    /// Size of a real number in a binary record.
    std::size_t realSize() const { return number_ == 2 ? sizeof(float) : sizeof(double); }

    /// Whether a float may lose digits of a value that matter; those of lines have few.
    bool holdsDoubles() const { return isBinary() && realSize() == sizeof(double); }

private:
    std::int64_t number_;
};

} // namespace Frd

#endif
