#ifndef ZYL2_MPI_PARTITIONINDEX_H
#define ZYL2_MPI_PARTITIONINDEX_H

#include <cstdint>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mpi {

/// What an index says of a file, but for its name and ranks.
struct FileState
{
    std::uint64_t size = 0;
    /// CRC-32 of the root index.
    std::uint32_t checksum = 0;
};

/// The state of a file that was closed.
/// \throws Exception::FileWriteException it can't be read
FileState stateOf(std::string const& path);

/// The index of the files that a model is divided among.
class PartitionIndex
{
public:
    /// \param path      of the index
    /// \param fileCount how many files there are
    /// \throws Exception::InvalidArguments the path does not end with ".moxs"
    PartitionIndex(std::string const& path, int fileCount);

    std::string const& path() const { return path_; }
    std::string pathOf(int file) const;

    /// Creates the index, or takes the place of the one that is there.
    /// \param fileOfRank the number of the file that a rank's pieces are in, by rank
    /// \param states     of the files; none while they are being written
    /// \throws Exception::FileWriteException the system refuses
    void write(std::vector<int> const& fileOfRank, std::vector<FileState> const& states) const;

private:
    std::string nameOf(int file) const;
    std::string text(std::vector<int> const& fileOfRank,
                     std::vector<FileState> const& states) const;

    std::string path_;
    int fileCount_;
};

} // namespace Mpi
} // namespace Zyl2

#endif
