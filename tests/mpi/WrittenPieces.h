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

/// Writes a piece into a model of either kind.
/// \param wait called before each call
/// \param step called after each step
template <typename ModelT>
void writeBar(ModelT& model, Piece const& piece, std::function<void()> const& wait,
              std::function<void()> const& step)
{
    using namespace Zyl2::Mox2;
    Attributes about;
    about.set("Solver", "test");
    wait();
    model.addNode(NodeType::RootGroup, "Wave", about);
    unsigned int const group = model.addNode(NodeType::Group, "Parts");
    NodeProperties moved;
    moved.set(PropertyType::Translation, std::vector<float>{1, 2, 3});
    model.setNodeData(group, moved);
    unsigned int const bar = model.addNode(NodeType::Shape, "Bar");
    wait();
    model.addArrayProperty(DatasetType::Coordinates, ArrayView::table(piece.coordinates(), 3), bar,
                           Step());
    model.addArrayProperty(DatasetType::NodeIds, piece.nodeIds(), bar, Step());
    wait();
    model.addArrayProperty(DatasetType::Connectivity1, piece.connectivity(), bar, Step());
    std::vector<unsigned int> const lengths(piece.nodes - 1, 2);
    model.addArrayProperty(DatasetType::Polylength1, lengths, bar, Step());
    for (int number = 1; number <= StepCount; ++number) {
        wait();
        Attributes time;
        time.set("StepNumber", number);
        time.set("Time", 0.5F * static_cast<float>(number));
        model.addArrayProperty(DatasetType::Displacement,
                               ArrayView::table(piece.displacement(number), 3), bar,
                               Step("Step " + std::to_string(number), time));
        wait();
        step();
    }
}

/// Writes the piece of a rank.
/// \param pause called before each call
void writePiece(Zyl2::Mpi::PartitionedModel& model, Piece const& piece,
                std::function<void()> const& pause = {});

#endif
