#include "mpi/WrittenPieces.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>

FirstRanks::FirstRanks(int count)
{
    int rank = 0;
    MPI_Comm_rank(MPI_COMM_WORLD, &rank);
    MPI_Comm_split(MPI_COMM_WORLD, rank < count ? 0 : MPI_UNDEFINED, rank, &comm_);
}

FirstRanks::~FirstRanks()
{
    if (areMine())
        MPI_Comm_free(&comm_);
}

int FirstRanks::rank() const
{
    int rank = 0;
    MPI_Comm_rank(comm_, &rank);
    return rank;
}

int FirstRanks::size() const
{
    int size = 0;
    MPI_Comm_size(comm_, &size);
    return size;
}

std::string FirstRanks::folder() const
{
    std::array<char, 64> name{};
    std::string const shape = "/tmp/mpi_tests.XXXXXX";
    shape.copy(name.data(), name.size() - 1);
    if (rank() == 0 && mkdtemp(name.data()) == nullptr)
        std::abort();
    MPI_Bcast(name.data(), static_cast<int>(name.size()), MPI_CHAR, 0, comm_);
    return name.data();
}

Piece::Piece(int rank, int ranks)
    : firstNode(static_cast<unsigned int>(64 / ranks * rank)),
      nodes(static_cast<unsigned int>(64 / ranks + 1))
{}

std::vector<float> Piece::coordinates() const
{
    std::vector<float> values;
    for (unsigned int node = firstNode; node < firstNode + nodes; ++node)
        values.insert(values.end(), {static_cast<float>(node) * 0.5F, 0, 1});
    return values;
}

std::vector<unsigned int> Piece::nodeIds() const
{
    std::vector<unsigned int> values;
    for (unsigned int node = firstNode; node < firstNode + nodes; ++node)
        values.push_back(node + 1);
    return values;
}

std::vector<unsigned int> Piece::connectivity() const
{
    std::vector<unsigned int> values;
    for (unsigned int row = 0; row + 1 < nodes; ++row)
        values.insert(values.end(), {row, row + 1});
    return values;
}

std::vector<double> Piece::displacement(int step) const
{
    std::vector<double> values;
    for (unsigned int node = firstNode; node < firstNode + nodes; ++node)
        values.insert(values.end(), {0, std::sin(0.1 * node + step), 1e-3 * node});
    return values;
}

void writePiece(Zyl2::Mpi::PartitionedModel& model, Piece const& piece,
                std::function<void()> const& pause)
{
    writeBar(
        model, piece, pause ? pause : [] {}, [&] { model.step(); });
}
