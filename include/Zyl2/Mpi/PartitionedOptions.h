#ifndef ZYL2_MPI_PARTITIONEDOPTIONS_H
#define ZYL2_MPI_PARTITIONEDOPTIONS_H

#include <Zyl2/Mox2/SaverOptions.h>

#include <cstddef>

namespace Zyl2 {
namespace Mpi {

/// How a model is divided among files, and how each of these is written. The same on all ranks.
struct PartitionedOptions
{
    PartitionedOptions() : ranksPerFile(0), messageBytes(1048576) {}

    /// How many ranks, one after the other, share a file. 0, the default: those of one machine.
    int ranksPerFile;
    /// The most bytes that a rank sends at a time: 4096 to 1073741824.
    std::size_t messageBytes;
    /// As for `Mox2::Model::saveTo`. `overwrite` is for the index and all files.
    Mox2::SaverOptions saver;
};

} // namespace Mpi
} // namespace Zyl2

#endif
