// The workloads by moxwriter, through its public interface alone.

#include "Arguments.h"
#include "HostData.h"
#include "Measurement.h"

#include <Zyl2/Mox2/Model.h>

#include <chrono>
#include <future>
#include <utility>

using namespace Bench;
using namespace Zyl2::Mox2;

namespace {

/// The host's arrays in the form that the interface takes.
Array1d<unsigned int> array(std::vector<std::uint32_t> const& values)
{
    return Array1d<unsigned int>(values);
}

/// \copydoc array
Array2d<float> array(std::vector<float> const& values, std::size_t width)
{
    Array2d<float> result(values.size() / width, width);
    result.copy_from(values.data());
    return result;
}

struct MeshArrays
{
    explicit MeshArrays(Mesh const& mesh)
        : coordinates(array(mesh.coordinates, 3)), connectivity(array(mesh.connectivity)),
          nodesPerCell(array(mesh.nodesPerCell)), nodeIds(array(mesh.nodeIds)),
          cellIds(array(mesh.cellIds))
    {}

    Array2d<float> coordinates;
    Array1d<unsigned int> connectivity;
    Array1d<unsigned int> nodesPerCell;
    Array1d<unsigned int> nodeIds;
    Array1d<unsigned int> cellIds;
};

struct StepArrays
{
    explicit StepArrays(StepFields const& fields)
        : step(fields.name), displacement(array(fields.displacement, 3)),
          stress(array(fields.stress, 6))
    {
        step.attributes.set("Time", fields.time);
    }

    Step step;
    Array2d<float> displacement;
    Array2d<float> stress;
};

struct ResultArrays
{
    explicit ResultArrays(TransientResult&& result) : mesh(result.mesh), bytes(result.bytes())
    {
        for (StepFields& fields : result.steps) {
            steps.emplace_back(fields);
            // Both copies of a large result would be twice the memory.
            fields = StepFields();
        }
    }

    MeshArrays mesh;
    std::uint64_t bytes;
    std::vector<StepArrays> steps;
};

void addMesh(Model& model, unsigned int shape, MeshArrays const& mesh)
{
    model.addArrayProperty(DatasetType::Coordinates, mesh.coordinates, shape, Step());
    model.addArrayProperty(DatasetType::Connectivity3, mesh.connectivity, shape, Step());
    model.addArrayProperty(DatasetType::Polylength3, mesh.nodesPerCell, shape, Step());
    model.addArrayProperty(DatasetType::NodeIds, mesh.nodeIds, shape, Step());
    model.addArrayProperty(DatasetType::ElementIds, mesh.cellIds, shape, Step());
}

void writeResult(std::string const& path, ResultArrays const& result)
{
    Model model;
    model.saveTo(path);
    Array1d<unsigned int> const shapes = model.addAssemblyComponents({"/block/steel"});
    addMesh(model, shapes[0], result.mesh);
    for (StepArrays const& fields : result.steps) {
        model.addArrayProperty(DatasetType::Displacement, fields.displacement, shapes[0],
                               fields.step);
        model.addArrayProperty("STRESS", DatasetType::Result13, fields.stress, shapes[0],
                               fields.step);
    }
    model.close();
}

void writeTransient(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    ResultArrays const result(transientResult(arguments.number("edge"), arguments.number("steps")));
    measureWriting(folder, result.bytes, [&] { writeResult(folder + "/result.mox", result); });
}

/// Seconds of the clock since it was made.
class Stopwatch
{
public:
    double seconds() const
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// Keeps a core busy.
void compute(double seconds)
{
    Stopwatch const watch;
    while (watch.seconds() < seconds) {
    }
}

/// A solver that computes as long before each array as compressing it takes. What is told are the
/// seconds within the calls that add arrays.
void writeWhileComputing(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    ResultArrays const result(transientResult(arguments.number("edge"), arguments.number("steps")));
    auto const write = [&](int threads, double secondsPerByte) {
        Model model;
        SaverOptions options;
        options.overwrite = true;
        options.threads = threads;
        model.saveTo(folder + "/result.mox", options);
        unsigned int const shape = model.addAssemblyComponents({"/block/steel"})[0];
        addMesh(model, shape, result.mesh);
        double inCalls = 0;
        auto const add = [&](char const* name, DatasetType type, Array2d<float> const& values,
                             Step const& step) {
            std::size_t const bytes = values.rows() * values.cols() * sizeof(float);
            compute(secondsPerByte * static_cast<double>(bytes));
            Stopwatch const call;
            model.addArrayProperty(name, type, values, shape, step);
            inCalls += call.seconds();
        };
        for (StepArrays const& fields : result.steps) {
            add("DISP", DatasetType::Displacement, fields.displacement, fields.step);
            add("STRESS", DatasetType::Result13, fields.stress, fields.step);
        }
        model.close();
        return inCalls;
    };
    Stopwatch const calibration;
    write(0, 0);
    double const secondsPerByte = calibration.seconds() / static_cast<double>(result.bytes);
    std::uint64_t const residentBefore = residentBytes();
    double const inCalls =
        write(static_cast<int>(arguments.number("model-threads")), secondsPerByte);
    print({inCalls, result.bytes, bytesOfFolder(folder)}, residentBefore);
}

/// The same model several times at once, each by a thread of the host's.
void writeModelsAtOnce(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    std::size_t const models = arguments.number("models");
    ResultArrays const result(transientResult(arguments.number("edge"), arguments.number("steps")));
    measureWriting(folder, result.bytes * models, [&] {
        std::vector<std::future<void>> writing;
        for (std::size_t model = 0; model < models; ++model)
            writing.push_back(std::async(std::launch::async, [&, model] {
                writeResult(folder + "/model " + std::to_string(model) + ".mox", result);
            }));
        for (std::future<void>& one : writing)
            one.get();
    });
}

DatasetType resultType(std::size_t width)
{
    return width == 1   ? DatasetType::Result10
           : width == 3 ? DatasetType::Result11
                        : DatasetType::Result13;
}

/// A dataset with its values as the interface takes them.
struct DatasetArray
{
    explicit DatasetArray(SmallDataset const& dataset)
        : name(dataset.name), type(resultType(dataset.width)),
          values(array(dataset.values, dataset.width))
    {}

    std::string name;
    DatasetType type;
    Array2d<float> values;
};

struct PartArrays
{
    explicit PartArrays(Part const& part)
        : path("/assembly/" + part.name), datasets(part.datasets.begin(), part.datasets.end())
    {}

    std::string path;
    std::vector<DatasetArray> datasets;
};

std::vector<std::string> pathsOf(std::vector<PartArrays> const& parts)
{
    std::vector<std::string> result;
    for (PartArrays const& part : parts)
        result.push_back(part.path);
    return result;
}

void writeParts(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    std::vector<Part> const host =
        smallParts(arguments.number("parts"), arguments.number("datasets"));
    std::vector<PartArrays> const parts(host.begin(), host.end());
    measureWriting(folder, bytesOf(host), [&] {
        Model model;
        model.saveTo(folder + "/parts.mox");
        Array1d<unsigned int> const shapes = model.addAssemblyComponents(pathsOf(parts));
        for (std::size_t part = 0; part < parts.size(); ++part)
            for (DatasetArray const& dataset : parts[part].datasets)
                model.addArrayProperty(dataset.name, dataset.type, dataset.values, shapes[part],
                                       Step());
        model.close();
    });
}

std::vector<std::string> componentPaths(std::vector<std::string> const& groups,
                                        std::vector<std::string> const& shapes)
{
    std::vector<std::string> result;
    result.reserve(groups.size() * shapes.size());
    for (std::string const& group : groups)
        for (std::string const& shape : shapes)
            result.push_back("/assembly/" + group + "/" + shape);
    return result;
}

void writePaths(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    std::vector<std::string> const groups = groupNames(arguments.number("groups"));
    std::vector<std::string> const shapes = shapeNames(arguments.number("shapes"));
    std::vector<std::string> const paths = componentPaths(groups, shapes);
    measureWriting(folder, bytesOfPaths(groups, shapes), [&] {
        Model model;
        model.saveTo(folder + "/paths.mox");
        model.addAssemblyComponents(paths);
        model.close();
    });
}

void writeSmallModels(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    std::size_t const models = arguments.number("models");
    ResultArrays const result(transientResult(arguments.number("edge"), 1));
    measureWriting(folder, result.bytes * models, [&] {
        for (std::size_t model = 0; model < models; ++model)
            writeResult(folder + "/model " + std::to_string(model) + ".mox", result);
    });
}

Array1d<float> largeResult(std::size_t bytes)
{
    Array1d<float> result(bytes / sizeof(float));
    for (std::size_t row = 0; row < result.size(); ++row)
        result[row] = largeResultValue(row);
    return result;
}

/// The host has one array, whatever the number of datasets is: what grows is the writer's.
void writeLargeResults(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    std::size_t const datasets = arguments.number("datasets");
    std::size_t const bytes = arguments.number("bytes");
    Array1d<float> const values = largeResult(bytes);
    measureWriting(folder, bytes * datasets, [&] {
        Model model;
        model.saveTo(folder + "/large.mox");
        Array1d<unsigned int> const shapes = model.addAssemblyComponents({"/block/steel"});
        for (std::size_t number = 0; number < datasets; ++number)
            model.addArrayProperty("NDTEMP", DatasetType::Result10, values, shapes[0],
                                   Step("Step " + std::to_string(number)));
        model.close();
    });
}

/// What hosts have before the clock starts: rows of three.
template <typename ElementT>
std::vector<ElementT> field(Arguments const& arguments)
{
    std::vector<ElementT> values(arguments.number("bytes") / sizeof(float) / 3 * 3);
    for (std::size_t at = 0; at < values.size(); ++at)
        values[at] = static_cast<ElementT>(largeResultValue(at));
    return values;
}

/// Writes the same field again and again, as steps of a result.
template <typename FieldT>
void writeField(Arguments const& arguments, FieldT const& values, std::size_t size)
{
    std::string const& folder = arguments.text("output");
    std::size_t const datasets = arguments.number("datasets");
    measureWriting(folder, datasets * size * sizeof(float), [&] {
        Model model;
        model.saveTo(folder + "/field.mox");
        Array1d<unsigned int> const shapes = model.addAssemblyComponents({"/block/steel"});
        for (std::size_t number = 0; number < datasets; ++number)
            model.addArrayProperty(DatasetType::Displacement, values, shapes[0],
                                   Step("Step " + std::to_string(number)));
        model.close();
    });
}

/// The host's array as it is.
template <typename ElementT>
void writeView(Arguments const& arguments)
{
    std::vector<ElementT> const values = field<ElementT>(arguments);
    writeField(arguments, ArrayView::table(values, 3), values.size());
}

/// What views are compared with.
void writeTable(Arguments const& arguments)
{
    Array2d<float> const values = array(field<float>(arguments), 3);
    writeField(arguments, values, values.rows() * values.cols());
}

} // namespace

int main(int argc, char** argv)
{
    return runWorkload(argc, argv,
                       {{"transient", writeTransient},
                        {"computing", writeWhileComputing},
                        {"models-at-once", writeModelsAtOnce},
                        {"parts", writeParts},
                        {"paths", writePaths},
                        {"small-models", writeSmallModels},
                        {"large-results", writeLargeResults},
                        {"field-table", writeTable},
                        {"field-view", writeView<float>},
                        {"field-view-double", writeView<double>}});
}
