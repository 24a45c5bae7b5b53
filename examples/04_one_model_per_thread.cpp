// A partitioned mesh, one model for each partition, written at the same time: every thread drives a
// model of its own. The first partition goes to the path that is given, the others beside it.

#include <Zyl2/Mox2/Model.h>

#include <cmath>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

using namespace Zyl2::Mox2;

namespace {

unsigned int const partitions = 4;
unsigned int const nodesPerEdge = 65;
unsigned int const nodesPerPartition = nodesPerEdge * nodesPerEdge;

// A square plate of nodesPerEdge x nodesPerEdge nodes; the partitions lie side by side.
Array2d<float> coordinates(unsigned int partition)
{
    Array2d<float> result(nodesPerPartition, 3, 0.0F);
    float const spacing = 1.0F / static_cast<float>(nodesPerEdge - 1);
    for (unsigned int node = 0; node < nodesPerPartition; ++node) {
        unsigned int const column = node % nodesPerEdge;
        unsigned int const row = node / nodesPerEdge;
        result(node, 0) = static_cast<float>(partition) + spacing * static_cast<float>(column);
        result(node, 1) = spacing * static_cast<float>(row);
    }
    return result;
}

Array1d<unsigned int> quadrilaterals()
{
    std::vector<unsigned int> result;
    for (unsigned int row = 0; row + 1 < nodesPerEdge; ++row) {
        for (unsigned int column = 0; column + 1 < nodesPerEdge; ++column) {
            unsigned int const corner = row * nodesPerEdge + column;
            unsigned int const above = corner + nodesPerEdge;
            result.insert(result.end(), {corner, corner + 1, above + 1, above});
        }
    }
    return Array1d<unsigned int>(result);
}

// Ids of the whole mesh, by which readers put the partitions together.
Array1d<unsigned int> nodeIds(unsigned int partition)
{
    Array1d<unsigned int> result(nodesPerPartition);
    for (unsigned int node = 0; node < nodesPerPartition; ++node) {
        unsigned int const column = node % nodesPerEdge + partition * (nodesPerEdge - 1);
        unsigned int const row = node / nodesPerEdge;
        result[node] = row * (partitions * (nodesPerEdge - 1) + 1) + column + 1;
    }
    return result;
}

Array2d<float> displacement(Array2d<float> const& nodes, float time)
{
    Array2d<float> result(nodesPerPartition, 3, 0.0F);
    for (unsigned int node = 0; node < nodesPerPartition; ++node)
        result(node, 2) = 0.1F * std::sin(nodes(node, 0) + time);
    return result;
}

// What one thread does: the model lives and dies in here, and nobody else knows it.
void writePartition(unsigned int partition, std::string const& path)
{
    SaverOptions options;
    options.overwrite = true;
    Model model;
    model.saveTo(path, options);
    model.addNode(NodeType::RootGroup, "Plate");
    unsigned int const shape =
        model.addNode(NodeType::Shape, "Partition " + std::to_string(partition));
    Array2d<float> const nodes = coordinates(partition);
    Array1d<unsigned int> const connectivity = quadrilaterals();
    model.addArrayProperty(DatasetType::Coordinates, nodes, shape, Step());
    model.addArrayProperty(DatasetType::Connectivity2, connectivity, shape, Step());
    model.addArrayProperty(DatasetType::Polylength2,
                           Array1d<unsigned int>(connectivity.size() / 4, 4U), shape, Step());
    model.addArrayProperty(DatasetType::NodeIds, nodeIds(partition), shape, Step());
    for (unsigned int step = 1; step <= 10; ++step) {
        float const time = 0.1F * static_cast<float>(step);
        model.addArrayProperty(DatasetType::Displacement, displacement(nodes, time), shape,
                               Step("Step " + std::to_string(step)));
    }
    // A full disk is noticed here at the latest: the destructor would end the process instead.
    model.close();
}

std::string pathOf(unsigned int partition, std::string const& first)
{
    return partition == 0 ? first : first + '.' + std::to_string(partition);
}

// An exception that leaves a thread ends the process, so it is put aside for the main thread.
void writeOrKeepFailure(unsigned int partition, std::string const& path,
                        std::exception_ptr& failure)
{
    try {
        writePartition(partition, path);
    } catch (...) {
        failure = std::current_exception();
    }
}

// Waits for its threads, even if one of them can't be started.
struct JoinedThreads
{
    ~JoinedThreads()
    {
        for (std::thread& thread : threads)
            thread.join();
    }

    std::vector<std::thread> threads;
};

void writeAndWait(std::string const& first, std::vector<std::exception_ptr>& failures)
{
    JoinedThreads running;
    for (unsigned int partition = 0; partition < partitions; ++partition)
        running.threads.emplace_back(writeOrKeepFailure, partition, pathOf(partition, first),
                                     std::ref(failures[partition]));
}

void writeAtOnce(std::string const& first)
{
    std::vector<std::exception_ptr> failures(partitions);
    writeAndWait(first, failures);
    for (std::exception_ptr const& failure : failures)
        if (failure)
            std::rethrow_exception(failure);
}

} // namespace

int main(int argc, char** argv)
{
    try {
        writeAtOnce(argc > 1 ? argv[1] : "partition.mox");
    } catch (std::exception const& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
