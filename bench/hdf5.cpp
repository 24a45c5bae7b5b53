// The workloads by HDF5: a group for each component and step, a dataset for each array.

#include "Arguments.h"
#include "HdfFile.h"
#include "HostData.h"
#include "Measurement.h"

#include <stdexcept>

using namespace Bench;

namespace {

void writeMesh(hid_t parent, Mesh const& mesh)
{
    constexpr auto storage = HdfStorage::Compressed;
    writeHdfDataset(parent, "Coordinates", mesh.coordinates, 3, storage);
    writeHdfDataset(parent, "Connectivity", mesh.connectivity, 8, storage);
    writeHdfDataset(parent, "Polylength", mesh.nodesPerCell, 1, storage);
    writeHdfDataset(parent, "Node Ids", mesh.nodeIds, 1, storage);
    writeHdfDataset(parent, "Element IDs", mesh.cellIds, 1, storage);
}

void writeStep(hid_t parent, StepFields const& step)
{
    HdfObject const group = createHdfGroup(parent, step.name);
    writeHdfDataset(group.id(), "Displacement", step.displacement, 3, HdfStorage::Compressed);
    writeHdfDataset(group.id(), "Stress", step.stress, 6, HdfStorage::Compressed);
}

void writeResult(std::string const& path, TransientResult const& result)
{
    HdfObject file = createHdfFile(path);
    writeMesh(file.id(), result.mesh);
    for (StepFields const& step : result.steps)
        writeStep(file.id(), step);
    file.close();
}

void writeTransient(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    TransientResult const result =
        transientResult(arguments.number("edge"), arguments.number("steps"));
    measureWriting(folder, result.bytes(), [&] { writeResult(folder + "/result.h5", result); });
}

void writePart(hid_t parent, Part const& part, HdfStorage storage)
{
    HdfObject const group = createHdfGroup(parent, part.name);
    for (SmallDataset const& dataset : part.datasets)
        writeHdfDataset(group.id(), dataset.name, dataset.values, dataset.width, storage);
}

void writeParts(Arguments const& arguments, HdfStorage storage, HdfFormat format)
{
    std::string const& folder = arguments.text("output");
    std::vector<Part> const parts =
        smallParts(arguments.number("parts"), arguments.number("datasets"));
    measureWriting(folder, bytesOf(parts), [&] {
        HdfObject file = createHdfFile(folder + "/parts.h5", format);
        for (Part const& part : parts)
            writePart(file.id(), part, storage);
        file.close();
    });
}

void writeCompressedParts(Arguments const& arguments)
{
    writeParts(arguments, HdfStorage::Compressed, HdfFormat::Default);
}

void writePartsInNewestFormat(Arguments const& arguments)
{
    writeParts(arguments, HdfStorage::Compressed, HdfFormat::Newest);
}

void writeContiguousParts(Arguments const& arguments)
{
    writeParts(arguments, HdfStorage::Contiguous, HdfFormat::Default);
}

void writeGroup(hid_t parent, std::string const& name, std::vector<std::string> const& children)
{
    HdfObject const group = createHdfGroup(parent, name);
    for (std::string const& child : children)
        createHdfGroup(group.id(), child).close();
}

/// Each group is made below the open one, which spares HDF5 finding it by its path.
void writePaths(Arguments const& arguments, HdfFormat format)
{
    std::string const& folder = arguments.text("output");
    std::vector<std::string> const groups = groupNames(arguments.number("groups"));
    std::vector<std::string> const shapes = shapeNames(arguments.number("shapes"));
    measureWriting(folder, bytesOfPaths(groups, shapes), [&] {
        HdfObject file = createHdfFile(folder + "/paths.h5", format);
        for (std::string const& group : groups)
            writeGroup(file.id(), group, shapes);
        file.close();
    });
}

void writePathsInDefaultFormat(Arguments const& arguments)
{
    writePaths(arguments, HdfFormat::Default);
}

void writePathsInNewestFormat(Arguments const& arguments)
{
    writePaths(arguments, HdfFormat::Newest);
}

void writeSmallModels(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    std::size_t const models = arguments.number("models");
    TransientResult const result = transientResult(arguments.number("edge"), 1);
    measureWriting(folder, result.bytes() * models, [&] {
        for (std::size_t model = 0; model < models; ++model)
            writeResult(folder + "/model " + std::to_string(model) + ".h5", result);
    });
}

/// One array, again and again, as (i) has it.
void writeLargeResults(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    std::size_t const datasets = arguments.number("datasets");
    std::vector<float> values(arguments.number("bytes") / sizeof(float));
    for (std::size_t row = 0; row < values.size(); ++row)
        values[row] = largeResultValue(row);
    measureWriting(folder, values.size() * sizeof(float) * datasets, [&] {
        HdfObject file = createHdfFile(folder + "/large.h5");
        for (std::size_t number = 0; number < datasets; ++number)
            writeHdfDataset(file.id(), "Step " + std::to_string(number), values, 1,
                            HdfStorage::Compressed);
        file.close();
    });
}

void requireAll(std::uint64_t bytes, Arguments const& arguments)
{
    if (bytes != arguments.number("bytes"))
        throw std::runtime_error("other values were read than were written");
}

/// All of a transient result, each dataset into memory that is there already.
void readTransient(Arguments const& arguments)
{
    std::size_t const steps = arguments.number("steps");
    std::vector<float> floats;
    std::vector<std::uint32_t> ids;
    std::uint64_t count = 0;
    measure(
        arguments.number("bytes"),
        [&] {
            HdfObject file = openHdfFile(arguments.text("model"));
            count += readHdfDataset(file.id(), "Coordinates", floats);
            for (char const* name : {"Connectivity", "Polylength", "Node Ids", "Element IDs"})
                count += readHdfDataset(file.id(), name, ids);
            for (std::size_t step = 1; step <= steps; ++step)
                for (char const* name : {"/Displacement", "/Stress"})
                    count +=
                        readHdfDataset(file.id(), "Step " + std::to_string(step) + name, floats);
            file.close();
        },
        [&] { return count * sizeof(float); });
    requireAll(count * sizeof(float), arguments);
}

void readOne(Arguments const& arguments)
{
    std::vector<float> values;
    std::uint64_t count = 0;
    measure(
        arguments.number("bytes"),
        [&] {
            HdfObject file = openHdfFile(arguments.text("model"));
            count = readHdfDataset(file.id(), "Step " + arguments.text("step"), values);
            file.close();
        },
        [&] { return count * sizeof(float); });
    requireAll(count * sizeof(float), arguments);
}

} // namespace

int main(int argc, char** argv)
{
    return runWorkload(argc, argv,
                       {{"transient", writeTransient},
                        {"parts", writeCompressedParts},
                        {"parts-in-newest-format", writePartsInNewestFormat},
                        {"contiguous-parts", writeContiguousParts},
                        {"paths", writePathsInDefaultFormat},
                        {"paths-in-newest-format", writePathsInNewestFormat},
                        {"small-models", writeSmallModels},
                        {"large-results", writeLargeResults},
                        {"read-transient", readTransient},
                        {"read-one", readOne}});
}
