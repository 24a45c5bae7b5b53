// The transient workload by the Exodus II library in a netCDF-4 file, shuffled and deflated at
// level
// 6. Exodus keeps each component of a field as a variable of its own; its arrays are made before
// the clock starts.

#include "Arguments.h"
#include "HostData.h"
#include "Measurement.h"

#include <exodusII.h>

#include <array>
#include <stdexcept>

using namespace Bench;

namespace {

constexpr int DeflateLevel = 6;
constexpr std::size_t NodalVariables = 9;
constexpr ex_entity_id BlockId = 1;

using Components = std::vector<std::vector<float>>;

void check(int status, char const* what)
{
    if (status < 0)
        throw std::runtime_error(std::string("Exodus failed: ") + what);
}

std::vector<float> column(std::vector<float> const& values, std::size_t width, std::size_t index)
{
    std::vector<float> result;
    result.reserve(values.size() / width);
    for (; index < values.size(); index += width)
        result.push_back(values[index]);
    return result;
}

void appendColumns(std::vector<float> const& values, std::size_t width, Components& components)
{
    for (std::size_t index = 0; index < width; ++index)
        components.push_back(column(values, width, index));
}

struct ExodusStep
{
    /// Takes the values over.
    explicit ExodusStep(StepFields& fields) : time(static_cast<float>(fields.time))
    {
        appendColumns(fields.displacement, 3, components);
        appendColumns(fields.stress, 6, components);
        fields = StepFields();
    }

    float time;
    Components components;
};

/// The host's arrays in the form that the interface takes.
struct ExodusResult
{
    explicit ExodusResult(TransientResult&& result)
        : bytes(result.bytes()), mesh(std::move(result.mesh)),
          steps(result.steps.begin(), result.steps.end())
    {
        appendColumns(mesh.coordinates, 3, coordinates);
        for (std::uint32_t& node : mesh.connectivity)
            ++node;
    }

    std::uint64_t bytes;
    Mesh mesh;
    Components coordinates;
    std::vector<ExodusStep> steps;
};

int createFile(std::string const& path)
{
    int valuesInMemory = sizeof(float);
    int valuesInFile = sizeof(float);
    int const file =
        ex_create(path.c_str(), EX_NOCLOBBER | EX_NETCDF4, &valuesInMemory, &valuesInFile);
    check(file, "ex_create");
    check(ex_set_option(file, EX_OPT_COMPRESSION_LEVEL, DeflateLevel), "compression level");
    check(ex_set_option(file, EX_OPT_COMPRESSION_SHUFFLE, 1), "shuffling");
    return file;
}

void putMesh(int file, ExodusResult const& result)
{
    auto const nodes = static_cast<std::int64_t>(result.mesh.nodes);
    auto const cells = static_cast<std::int64_t>(result.mesh.cells);
    check(ex_put_init(file, "block", 3, nodes, cells, 1, 0, 0), "ex_put_init");
    check(ex_put_coord(file, result.coordinates[0].data(), result.coordinates[1].data(),
                       result.coordinates[2].data()),
          "ex_put_coord");
    check(ex_put_block(file, EX_ELEM_BLOCK, BlockId, "HEX8", cells, 8, 0, 0, 0), "ex_put_block");
    check(ex_put_conn(file, EX_ELEM_BLOCK, BlockId, result.mesh.connectivity.data(), nullptr,
                      nullptr),
          "ex_put_conn");
    check(ex_put_id_map(file, EX_NODE_MAP, result.mesh.nodeIds.data()), "node ids");
    check(ex_put_id_map(file, EX_ELEM_MAP, result.mesh.cellIds.data()), "element ids");
}

void putVariableNames(int file)
{
    std::array<std::string, NodalVariables> names{"DISPX", "DISPY", "DISPZ", "SXX", "SYY",
                                                  "SZZ",   "SXY",   "SYZ",   "SZX"};
    std::array<char*, NodalVariables> pointers{};
    for (std::size_t index = 0; index < names.size(); ++index)
        pointers[index] = names[index].data();
    check(ex_put_variable_param(file, EX_NODAL, NodalVariables), "ex_put_variable_param");
    check(ex_put_variable_names(file, EX_NODAL, NodalVariables, pointers.data()),
          "ex_put_variable_names");
}

void putStep(int file, int number, ExodusStep const& step)
{
    check(ex_put_time(file, number, &step.time), "ex_put_time");
    for (std::size_t index = 0; index < step.components.size(); ++index) {
        auto const nodes = static_cast<std::int64_t>(step.components[index].size());
        check(ex_put_var(file, number, EX_NODAL, static_cast<int>(index + 1), 1, nodes,
                         step.components[index].data()),
              "ex_put_var");
    }
}

void writeResult(std::string const& path, ExodusResult const& result)
{
    int const file = createFile(path);
    putMesh(file, result);
    putVariableNames(file);
    for (std::size_t step = 0; step < result.steps.size(); ++step)
        putStep(file, static_cast<int>(step + 1), result.steps[step]);
    check(ex_close(file), "ex_close");
}

void writeTransient(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    ExodusResult const result(transientResult(arguments.number("edge"), arguments.number("steps")));
    measureWriting(folder, result.bytes, [&] { writeResult(folder + "/result.exo", result); });
}

} // namespace

int main(int argc, char** argv)
{
    return runWorkload(argc, argv, {{"transient", writeTransient}});
}
