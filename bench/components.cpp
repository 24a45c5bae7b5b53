// Time to write component paths and close the model. It has to grow with their number, in whatever
// shape the tree is: in groups of 1,000 shapes, and in one group that holds all.

#include <Zyl2/Mox2/Model.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;

namespace {

constexpr char const* outputFile = "bench_components.mox";

std::vector<std::string> paths(long groups, long shapesPerGroup)
{
    std::vector<std::string> result;
    result.reserve(static_cast<std::size_t>(groups * shapesPerGroup));
    for (long group = 0; group < groups; ++group)
        for (long shape = 0; shape < shapesPerGroup; ++shape)
            result.push_back("/assembly/group " + std::to_string(group) + "/part " +
                             std::to_string(shape));
    return result;
}

void writeModel(std::vector<std::string> const& components)
{
    SaverOptions options;
    options.overwrite = true;
    Model model;
    model.saveTo(outputFile, options);
    model.addAssemblyComponents(components);
    model.close();
}

void componentPaths(benchmark::State& state)
{
    std::vector<std::string> const components = paths(state.range(0), state.range(1));
    for ([[maybe_unused]] auto iteration : state)
        writeModel(components);
    state.SetItemsProcessed(state.iterations() * static_cast<long>(components.size()));
    std::remove(outputFile);
}

} // namespace

BENCHMARK(componentPaths)
    ->ArgNames({"groups", "shapes"})
    ->Args({1000, 1000})
    ->Args({4000, 1000})
    ->Args({1, 1000000})
    ->Args({1, 4000000})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
