// A host of several ranks, as far as it is told by the headers: a rank alone is one of them.

#include <Zyl2/Mpi/PartitionedModel.h>

#include <vector>

using namespace Zyl2::Mox2;

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    MPI_Init(&argc, &argv);
    {
        Zyl2::Mpi::PartitionedOptions options;
        options.saver.overwrite = true;
        Zyl2::Mpi::PartitionedModel model(MPI_COMM_WORLD, argv[1], options);
        model.addNode(NodeType::RootGroup, "Beam");
        unsigned int const beam = model.addNode(NodeType::Shape, "Steel");
        std::vector<double> const coordinates = {0, 0, 0, 1, 0, 0};
        model.addArrayProperty(DatasetType::Coordinates, ArrayView::table(coordinates, 3), beam,
                               Step());
        model.step();
        model.close();
    }
    MPI_Finalize();
    return 0;
}
