// A transient result of many ranks, by moxwriter:
//
//   --output FOLDER --edge NODES --steps STEPS --ranks-per-file RANKS [--threads THREADS]

#include "ranks/Ranks.h"

#include <Zyl2/Mpi/PartitionedModel.h>

using namespace Bench;
using namespace Zyl2::Mox2;

namespace {

void addMesh(Zyl2::Mpi::PartitionedModel& model, Mesh const& mesh, unsigned int shape)
{
    model.addArrayProperty(DatasetType::Coordinates, ArrayView::table(mesh.coordinates, 3), shape,
                           Step());
    model.addArrayProperty(DatasetType::Connectivity3, mesh.connectivity, shape, Step());
    model.addArrayProperty(DatasetType::Polylength3, mesh.nodesPerCell, shape, Step());
    model.addArrayProperty(DatasetType::NodeIds, mesh.nodeIds, shape, Step());
    model.addArrayProperty(DatasetType::ElementIds, mesh.cellIds, shape, Step());
}

void addStep(Zyl2::Mpi::PartitionedModel& model, StepFields const& fields, unsigned int shape)
{
    Step step(fields.name);
    step.attributes.set("Time", fields.time);
    model.addArrayProperty(DatasetType::Displacement, ArrayView::table(fields.displacement, 3),
                           shape, step);
    model.addArrayProperty("Stress", DatasetType::NodeTensor, ArrayView::table(fields.stress, 6),
                           shape, step);
}

void writeResult(Ranks const& ranks, Arguments const& arguments)
{
    // Blocks of the size that many ranks that wait for one of them are advised to take.
    constexpr std::size_t blockSize = std::size_t{16} << 20U;
    TransientResult const result = blockOf(ranks, arguments);
    Zyl2::Mpi::PartitionedOptions options;
    options.ranksPerFile = static_cast<int>(arguments.number("ranks-per-file"));
    options.saver.blockSize = blockSize;
    options.saver.threads = static_cast<unsigned int>(arguments.numberOr("threads", 0));
    std::string const folder = arguments.text("output");
    measureRanks(ranks, folder, result.bytes(), [&] {
        Zyl2::Mpi::PartitionedModel model(MPI_COMM_WORLD, folder + "/result.moxs", options);
        model.addNode(NodeType::RootGroup, "Result");
        unsigned int const shape = model.addNode(NodeType::Shape, "Block");
        addMesh(model, result.mesh, shape);
        for (StepFields const& step : result.steps) {
            addStep(model, step, shape);
            model.step();
        }
        return secondsOf([&] { model.close(); });
    });
}

} // namespace

int main(int argc, char** argv)
{
    return runRanks(argc, argv, writeResult);
}
