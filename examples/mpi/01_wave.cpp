// A wave on a square membrane, by an explicit method, on a domain that is divided among ranks:
//
//   mpirun -np 4 mpi_01_wave wave.moxs
//   mox join wave.moxs wave.mox
//
// Each rank has a block of the elements. Nodes between blocks belong to all ranks around them. A
// node's acceleration comes from the elements around it, so that a rank also needs the
// displacements one layer beyond its own nodes: those of its neighbours, the ghost layer.
//
//      rank 0         rank 1
//   . o---o---o     o---o---o .        o  a node of the rank: the ones in the middle are shared
//   . |   |   |.   .|   |   | .        .  a place of the ghost layer
//   . o---o---o     o---o---o .
//
// All ranks that share a node compute it from the same numbers in the same order. So the result
// does not depend on how many ranks there are, down to the last bit.

#include <Zyl2/Mpi/PartitionedModel.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;

namespace {

int const elementsPerSide = 48;
int const steps = 60;
int const stepsBetweenResults = 12;
double const sizeOfElement = 1.0 / elementsPerSide;
double const timeStep = 0.5 * sizeOfElement;

/// The elements from `first` up to, but without, `last` in one direction.
struct Range
{
    Range(int place, int places)
        : first(elementsPerSide * place / places), last(elementsPerSide * (place + 1) / places)
    {}
    int elements() const { return last - first; }
    int nodes() const { return elements() + 1; }

    int first;
    int last;
};

/// A rank's place among all, and who is beside it; MPI_PROC_NULL beyond the domain.
struct Neighbours
{
    Neighbours()
    {
        int ranks = 0;
        MPI_Comm_size(MPI_COMM_WORLD, &ranks);
        MPI_Dims_create(ranks, 2, sides.data());
        std::array<int, 2> const endsAreApart = {{0, 0}};
        MPI_Cart_create(MPI_COMM_WORLD, 2, sides.data(), endsAreApart.data(), 0, &comm);
        std::array<int, 2> ends = {{0, 0}};
        MPI_Cart_get(comm, 2, ends.data(), ends.data(), place.data());
        MPI_Cart_shift(comm, 0, 1, &left, &right);
        MPI_Cart_shift(comm, 1, 1, &below, &above);
    }
    ~Neighbours() { MPI_Comm_free(&comm); }
    Neighbours(Neighbours const&) = delete;
    Neighbours& operator=(Neighbours const&) = delete;

    MPI_Comm comm = MPI_COMM_NULL;
    std::array<int, 2> sides = {{0, 0}};
    std::array<int, 2> place = {{0, 0}};
    int left = MPI_PROC_NULL;
    int right = MPI_PROC_NULL;
    int below = MPI_PROC_NULL;
    int above = MPI_PROC_NULL;
};

/// A number for each node of a rank's block, and for the ghost layer around it.
class Field
{
public:
    Field(Range const& x, Range const& y)
        : width_(x.nodes() + 2), height_(y.nodes() + 2),
          values_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_))
    {}

    /// \param column, row from 0 for the rank's own nodes; -1, and one beyond the last, are ghosts
    double& at(int column, int row) { return values_[index(column, row)]; }
    double at(int column, int row) const { return values_[index(column, row)]; }

    /// Gets the ghost layer from the neighbours: first from the sides, then, with what came from
    /// there, from above and below, so that the corners are right, too. Neighbours share their
    /// outermost nodes; what they send is the layer behind these.
    void exchange(Neighbours const& near)
    {
        MPI_Datatype column = MPI_DATATYPE_NULL;
        MPI_Type_vector(height_, 1, width_, MPI_DOUBLE, &column);
        MPI_Type_commit(&column);
        trade(near.comm, column, near.left, &at(1, -1), &at(-1, -1), near.right,
              &at(width_ - 4, -1), &at(width_ - 2, -1));
        MPI_Type_free(&column);
        MPI_Datatype row = MPI_DATATYPE_NULL;
        MPI_Type_contiguous(width_, MPI_DOUBLE, &row);
        MPI_Type_commit(&row);
        trade(near.comm, row, near.below, &at(-1, 1), &at(-1, -1), near.above, &at(-1, height_ - 4),
              &at(-1, height_ - 2));
        MPI_Type_free(&row);
    }

private:
    std::size_t index(int column, int row) const
    {
        return static_cast<std::size_t>(row + 1) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(column + 1);
    }

    static void trade(MPI_Comm comm, MPI_Datatype type, int before, double* toBefore,
                      double* fromBefore, int behind, double* toBehind, double* fromBehind)
    {
        MPI_Sendrecv(toBefore, 1, type, before, 0, fromBehind, 1, type, behind, 0, comm,
                     MPI_STATUS_IGNORE);
        MPI_Sendrecv(toBehind, 1, type, behind, 1, fromBefore, 1, type, before, 1, comm,
                     MPI_STATUS_IGNORE);
    }

    int width_;
    int height_;
    std::vector<double> values_;
};

class Membrane
{
public:
    explicit Membrane(Neighbours const& near)
        : near_(near), x_(near.place[0], near.sides[0]), y_(near.place[1], near.sides[1]),
          before_(x_, y_), now_(x_, y_), next_(x_, y_)
    {
        forEachNode([this](int column, int row) {
            double const x = (x_.first + column) * sizeOfElement - 0.4;
            double const y = (y_.first + row) * sizeOfElement - 0.5;
            double const bump = 0.1 * std::exp(-80 * (x * x + y * y));
            now_.at(column, row) = isAtEdge(column, row) ? 0 : bump;
        });
        now_.exchange(near_);
        before_ = now_;
    }

    void addMesh(Zyl2::Mpi::PartitionedModel& model)
    {
        model.addNode(NodeType::RootGroup, "Wave");
        shape_ = model.addNode(NodeType::Shape, "Membrane");
        std::vector<float> coordinates;
        std::vector<unsigned int> nodeIds;
        forEachNode([&](int column, int row) {
            int const x = x_.first + column;
            int const y = y_.first + row;
            coordinates.push_back(static_cast<float>(x * sizeOfElement));
            coordinates.push_back(static_cast<float>(y * sizeOfElement));
            coordinates.push_back(0);
            nodeIds.push_back(static_cast<unsigned int>(y * (elementsPerSide + 1) + x + 1));
        });
        std::vector<unsigned int> connectivity;
        std::vector<unsigned int> elementIds;
        forEachElement([&](int column, int row) {
            int const corner = row * x_.nodes() + column;
            for (int const node :
                 {corner, corner + 1, corner + x_.nodes() + 1, corner + x_.nodes()})
                connectivity.push_back(static_cast<unsigned int>(node));
            elementIds.push_back(static_cast<unsigned int>((y_.first + row) * elementsPerSide +
                                                           x_.first + column + 1));
        });
        model.addArrayProperty(DatasetType::Coordinates, ArrayView::table(coordinates, 3), shape_,
                               Step());
        model.addArrayProperty(DatasetType::NodeIds, nodeIds, shape_, Step());
        model.addArrayProperty(DatasetType::ElementIds, elementIds, shape_, Step());
        model.addArrayProperty(DatasetType::Connectivity2, connectivity, shape_, Step());
        model.addArrayProperty(DatasetType::Polylength2,
                               std::vector<unsigned int>(elementIds.size(), 4), shape_, Step());
    }

    void addResult(Zyl2::Mpi::PartitionedModel& model, int number) const
    {
        Attributes attributes;
        attributes.set("StepNumber", number + 1);
        attributes.set("Time", number * timeStep);
        Step const step("Step " + std::to_string(number), attributes);
        std::vector<double> displacement;
        forEachNode([&](int column, int row) {
            displacement.push_back(0);
            displacement.push_back(0);
            displacement.push_back(now_.at(column, row));
        });
        std::vector<double> tilt;
        forEachElement([&](int column, int row) {
            tilt.push_back((now_.at(column + 1, row) - now_.at(column, row)) / sizeOfElement);
        });
        model.addArrayProperty(DatasetType::Displacement, ArrayView::table(displacement, 3), shape_,
                               step);
        model.addArrayProperty("Tilt", DatasetType::Result14, tilt, shape_, step);
    }

    /// Central differences; bilinear elements with their mass at the nodes.
    void advance()
    {
        double const factor = timeStep * timeStep / (sizeOfElement * sizeOfElement);
        forEachNode([&](int column, int row) {
            double around = 0;
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                    around += now_.at(column + dx, row + dy);
            double const force = (around - 9 * now_.at(column, row)) / 3;
            double const moved =
                2 * now_.at(column, row) - before_.at(column, row) + factor * force;
            next_.at(column, row) = isAtEdge(column, row) ? 0 : moved;
        });
        std::swap(before_, now_);
        std::swap(now_, next_);
        now_.exchange(near_);
    }

private:
    /// The membrane is held at its edge.
    bool isAtEdge(int column, int row) const
    {
        int const x = x_.first + column;
        int const y = y_.first + row;
        return x == 0 || y == 0 || x == elementsPerSide || y == elementsPerSide;
    }

    template <typename Visit>
    void forEachNode(Visit const& visit) const
    {
        for (int row = 0; row < y_.nodes(); ++row)
            for (int column = 0; column < x_.nodes(); ++column)
                visit(column, row);
    }
    template <typename Visit>
    void forEachElement(Visit const& visit) const
    {
        for (int row = 0; row < y_.elements(); ++row)
            for (int column = 0; column < x_.elements(); ++column)
                visit(column, row);
    }

    Neighbours const& near_;
    Range x_;
    Range y_;
    Field before_;
    Field now_;
    Field next_;
    unsigned int shape_ = 0;
};

void run(std::string const& path)
{
    Neighbours const near;
    Membrane membrane(near);
    Zyl2::Mpi::PartitionedOptions options;
    options.ranksPerFile = 2;
    options.saver.overwrite = true;
    Zyl2::Mpi::PartitionedModel model(near.comm, path, options);
    membrane.addMesh(model);
    for (int number = 0; number <= steps; ++number) {
        if (number % stepsBetweenResults == 0) {
            membrane.addResult(model, number);
            model.step();
        }
        membrane.advance();
    }
    model.close();
}

} // namespace

int main(int argc, char** argv)
{
    int provided = 0;
    MPI_Init_thread(&argc, &argv, MPI_THREAD_FUNNELED, &provided);
    int status = EXIT_SUCCESS;
    try {
        run(argc > 1 ? argv[1] : "wave.moxs");
    } catch (std::exception const& error) {
        // All ranks say what the first of them failed at.
        std::cerr << error.what() << '\n';
        status = EXIT_FAILURE;
    }
    MPI_Finalize();
    return status;
}
