#ifndef TESTS_MPI_WRITTENPIECES_H
#define TESTS_MPI_WRITTENPIECES_H

#include <Zyl2/Mpi/PartitionedModel.h>

#include <mpi.h>

#include <functional>
#include <string>
#include <vector>

// A bar of nodes in a row, cut into pieces that share the nodes at their ends, and its movement in
// a few steps.

/// The first so many ranks of all.
class FirstRanks
{
public:
    explicit FirstRanks(int count);
    ~FirstRanks();
    FirstRanks(FirstRanks const&) = delete;
    FirstRanks& operator=(FirstRanks const&) = delete;

    bool areMine() const { return comm_ != MPI_COMM_NULL; }
    MPI_Comm comm() const { return comm_; }
    int rank() const;
    int size() const;
    /// A folder that is empty, the same on all ranks.
    std::string folder() const;

private:
    MPI_Comm comm_ = MPI_COMM_NULL;
};

struct Piece
{
    Piece(int rank, int ranks);

    /// Rows of x, y and z.
    std::vector<float> coordinates() const;
    std::vector<unsigned int> nodeIds() const;
    std::vector<unsigned int> connectivity() const;
    std::vector<double> displacement(int step) const;

    unsigned int firstNode = 0;
    unsigned int nodes = 0;
};

constexpr int StepCount = 3;

/// Writes the piece of a rank.
/// \param pause called before each call
void writePiece(Zyl2::Mpi::PartitionedModel& model, Piece const& piece,
                std::function<void()> const& pause = {});

#endif
