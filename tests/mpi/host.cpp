// A program of many ranks, for tests that look at what it leaves from outside.
//
//   host INDEX RANKS_PER_FILE          writes the pieces of a bar
//   host INDEX RANKS_PER_FILE CALL     the same; rank CALL % ranks is killed at call CALL / ranks
//   host serial OUT                    writes the whole bar without any ranks

#include "mpi/WrittenPieces.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

void writeWhole(std::string const& path)
{
    Zyl2::Mox2::Model model;
    model.saveTo(path);
    writeBar(
        model, Piece(0, 1), [] {}, [] {});
    model.close();
}

void writePieces(std::string const& path, int ranksPerFile, int killedCall)
{
    int rank = 0;
    int size = 0;
    MPI_Comm_rank(MPI_COMM_WORLD, &rank);
    MPI_Comm_size(MPI_COMM_WORLD, &size);
    Zyl2::Mpi::PartitionedOptions options;
    options.ranksPerFile = ranksPerFile;
    options.messageBytes = 4096;
    options.saver.overwrite = true;
    int call = 0;
    Zyl2::Mpi::PartitionedModel model(MPI_COMM_WORLD, path, options);
    writePiece(model, Piece(rank, size), [&] {
        if (killedCall >= 0 && rank == killedCall % size && call++ == killedCall / size)
            (void)std::raise(SIGKILL);
    });
    model.close();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::strcmp(argv[1], "serial") == 0) {
        writeWhole(argv[2]);
        return 0;
    }
    if (argc != 3 && argc != 4)
        return 2;
    MPI_Init(&argc, &argv);
    writePieces(argv[1], std::atoi(argv[2]), argc == 4 ? std::atoi(argv[3]) : -1);
    MPI_Finalize();
    return 0;
}
