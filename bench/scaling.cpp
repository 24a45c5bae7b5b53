// Time to write models that are large in one respect each: it has to grow with the size alone, so
// that the time of an item stays what it is.

#include <Zyl2/Mox2/Model.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;

namespace {

constexpr char const* outputFile = "bench_scaling.mox";

/// A model that is open for writing, and closed and removed with its owner.
class OpenModel
{
public:
    OpenModel()
    {
        SaverOptions options;
        options.overwrite = true;
        model.saveTo(outputFile, options);
    }
    OpenModel(OpenModel const&) = delete;
    OpenModel& operator=(OpenModel const&) = delete;
    ~OpenModel()
    {
        model.close();
        std::remove(outputFile);
    }

    Model model;
};

/// Sets how large a block may become, for as long as it lives.
class BlockLimit
{
public:
    explicit BlockLimit(char const* bytes) { setenv(variable, bytes, 1); }
    BlockLimit(BlockLimit const&) = delete;
    BlockLimit& operator=(BlockLimit const&) = delete;
    ~BlockLimit() { unsetenv(variable); }

private:
    static constexpr char const* variable = "MOXWRITER_DEFAULT_BLOCK_SIZE";
};

Array2d<float> const& tenValues()
{
    static Array2d<float> const values(10, 1);
    return values;
}

/// Gives one shape to write data for.
unsigned int addShape(Model& model)
{
    return model.addAssemblyComponents(std::vector<std::string>{"/assembly/part"})[0];
}

void nodes(benchmark::State& state)
{
    for ([[maybe_unused]] auto iteration : state) {
        OpenModel open;
        open.model.addNode(NodeType::RootGroup, "assembly");
        for (long node = 0; node < state.range(0); ++node) {
            open.model.setCurrentNodeId(1);
            open.model.addNode(NodeType::Group, "group " + std::to_string(node));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// All of the same name: a look-up has to choose among them.
void twins(benchmark::State& state)
{
    for ([[maybe_unused]] auto iteration : state) {
        OpenModel open;
        open.model.addNode(NodeType::RootGroup, "assembly");
        for (long node = 0; node < state.range(0); ++node) {
            open.model.setCurrentNodeId(1);
            open.model.addNode(NodeType::Group, "group");
            open.model.getNodeId("/assembly/group");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void variables(benchmark::State& state)
{
    for ([[maybe_unused]] auto iteration : state) {
        OpenModel open;
        unsigned int const shape = addShape(open.model);
        for (long variable = 0; variable < state.range(0); ++variable)
            open.model.addArrayProperty("variable " + std::to_string(variable),
                                        DatasetType::Result10, tenValues(), shape, Step(""));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// One dataset for many steps, which share its values.
void stepsOfADataset(benchmark::State& state)
{
    for ([[maybe_unused]] auto iteration : state) {
        OpenModel open;
        unsigned int const shape = addShape(open.model);
        StepList steps(static_cast<unsigned long>(state.range(0)));
        for (long step = 0; step < state.range(0); ++step)
            steps.set(static_cast<unsigned long>(step), Step("step " + std::to_string(step)));
        open.model.addArrayProperty("variable", DatasetType::Result10, tenValues(), shape, steps);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void blocks(benchmark::State& state)
{
    BlockLimit const limit("1");
    for ([[maybe_unused]] auto iteration : state) {
        OpenModel open;
        unsigned int const shape = addShape(open.model);
        for (long block = 0; block < state.range(0); ++block)
            open.model.addArrayProperty("variable " + std::to_string(block), DatasetType::Result10,
                                        tenValues(), shape, Step(""));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void attributes(benchmark::State& state)
{
    for ([[maybe_unused]] auto iteration : state) {
        OpenModel open;
        Attributes many;
        for (long attribute = 0; attribute < state.range(0); ++attribute)
            many.set("attribute " + std::to_string(attribute), 1.5);
        open.model.addNode(NodeType::RootGroup, "assembly", many);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void fromSmallToLarge(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(25000)->Arg(100000)->Arg(400000)->Iterations(1)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(nodes)->Apply(fromSmallToLarge);
BENCHMARK(twins)->Apply(fromSmallToLarge);
BENCHMARK(variables)->Apply(fromSmallToLarge);
BENCHMARK(stepsOfADataset)->Apply(fromSmallToLarge);
BENCHMARK(blocks)->Apply(fromSmallToLarge);
BENCHMARK(attributes)->Apply(fromSmallToLarge);
