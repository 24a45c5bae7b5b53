#ifndef MOXREAD_PARTITIONINDEX_H
#define MOXREAD_PARTITIONINDEX_H

#include "moxread/Export.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace MoxRead {

/// A file that an index names.
struct MOXREAD_EXPORT PartitionFile
{
    /// Name as it stands in the index: relative to the folder of the index.
    std::string name;
    /// Path by which the file can be opened.
    std::string path;
    /// First and last rank of those whose pieces it holds.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> ranks;
    /// Bytes of the file, and the checksum of its root index; known when the index is complete.
    std::uint64_t size = 0;
    std::uint32_t rootIndex = 0;

    bool isOf(std::uint32_t rank) const;
    /// "rank 3", "ranks 0 to 7", "ranks 0, 2 to 3".
    std::string rankText() const;
};

/// The index of the files that the ranks of a program have written one model into.
class MOXREAD_EXPORT PartitionIndex
{
public:
    /// Whether a file is an index, by its first byte. False for one that can't be read.
    static bool isIndex(std::string const& path);

    /// Raises FormatError when the file is no index that can be used. Looks at none of the files
    /// that it names.
    explicit PartitionIndex(std::string const& path);

    /// Whether the program has finished all files.
    bool isComplete() const noexcept { return isComplete_; }
    std::uint32_t ranks() const noexcept { return ranks_; }
    std::vector<PartitionFile> const& files() const noexcept { return files_; }

    /// Says in one sentence what is wrong with a file as one of this index: that it is missing,
    /// empty, incomplete, or of another run. Reads no more than its container. Empty when nothing
    /// is wrong.
    std::string complaintAbout(PartitionFile const& file) const;

    /// A file with the size and the checksum that it has now. Raises FormatError when it is no
    /// container.
    static PartitionFile asFound(PartitionFile const& file);

    /// Raises FormatError, with a line for each file that something is wrong with.
    void requireFiles() const;

private:
    void requireEachRankOnce() const;

    std::string path_;
    bool isComplete_ = false;
    std::uint32_t ranks_ = 0;
    std::vector<PartitionFile> files_;
};

} // namespace MoxRead

#endif
