// A program of many ranks, for tests that look at what it leaves from outside.
//
//   host INDEX RANKS_PER_FILE          writes the pieces of a bar
//   host INDEX RANKS_PER_FILE CALL     the same; rank CALL % ranks is killed at call CALL / ranks
//   host serial OUT                    writes the whole bar without any ranks
//   host late INDEX                    the same as the first, but MPI ends before the model does;
//   says
//                                      why there is none before MPI begins and behind its end
//   host every FOLDER                  for 1, 2, 4, 8 ranks, as far as there are as many, and 1, 2
//   and all
//                                      of them in a file: COUNT.RANKS_PER_FILE.moxs in the folder

#include "mpi/WrittenPieces.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>

namespace {

void writeWhole(std::string const& path)
{
    Zyl2::Mox2::Model model;
    model.saveTo(path);
    writeBar(
        model, Piece(0, 1), [] {}, [] {});
    model.close();
}

void writePieces(MPI_Comm comm, std::string const& path, int ranksPerFile, int killedCall)
{
    int rank = 0;
    int size = 0;
    MPI_Comm_rank(comm, &rank);
    MPI_Comm_size(comm, &size);
    Zyl2::Mpi::PartitionedOptions options;
    options.ranksPerFile = ranksPerFile;
    options.messageBytes = 4096;
    options.saver.overwrite = true;
    int call = 0;
    Zyl2::Mpi::PartitionedModel model(comm, path, options);
    writePiece(model, Piece(rank, size), [&] {
        if (killedCall >= 0 && rank == killedCall % size && call++ == killedCall / size)
            (void)std::raise(SIGKILL);
    });
    model.close();
}

void tellOfRefusal(std::string const& path)
{
    try {
        Zyl2::Mpi::PartitionedModel const model(MPI_COMM_WORLD, path);
        std::printf("there is a model without MPI\n");
    } catch (Zyl2::Exception::InvalidObjectState const& error) {
        std::printf("%s\n", Zyl2::Exception::detail(error));
    }
}

void writeAcrossTheEnd(std::string const& path)
{
    tellOfRefusal(path);
    MPI_Init(nullptr, nullptr);
    int rank = 0;
    int size = 0;
    MPI_Comm_rank(MPI_COMM_WORLD, &rank);
    MPI_Comm_size(MPI_COMM_WORLD, &size);
    Zyl2::Mpi::PartitionedModel model(MPI_COMM_WORLD, path);
    writePiece(model, Piece(rank, size));
    MPI_Finalize();
    tellOfRefusal(path);
}

void writeEvery(std::string const& folder)
{
    int size = 0;
    MPI_Comm_size(MPI_COMM_WORLD, &size);
    for (int count = 1; count <= size; count *= 2) {
        FirstRanks const ranks(count);
        if (!ranks.areMine())
            continue;
        for (int const ranksPerFile : std::set<int>{1, std::min(2, count), count})
            writePieces(ranks.comm(),
                        folder + "/" + std::to_string(count) + "." + std::to_string(ranksPerFile) +
                            ".moxs",
                        ranksPerFile, -1);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::strcmp(argv[1], "serial") == 0) {
        writeWhole(argv[2]);
        return 0;
    }
    if (argc == 3 && std::strcmp(argv[1], "late") == 0) {
        writeAcrossTheEnd(argv[2]);
        return 0;
    }
    if (argc != 3 && argc != 4)
        return 2;
    MPI_Init(&argc, &argv);
    if (std::strcmp(argv[1], "every") == 0)
        writeEvery(argv[2]);
    else
        writePieces(MPI_COMM_WORLD, argv[1], std::atoi(argv[2]),
                    argc == 4 ? std::atoi(argv[3]) : -1);
    MPI_Finalize();
    return 0;
}
