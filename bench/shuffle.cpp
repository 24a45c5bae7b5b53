// Bandwidth of sorting values into byte planes, next to that of copying as many bytes. Arrays are
// larger than any cache.

#include "Zyl2/Util/Shuffle.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

constexpr std::size_t ArrayBytes = 128U << 20U;

/// A source of whole rows and a target, both touched.
struct Arrays
{
    explicit Arrays(std::size_t columns)
        : width(columns), rows(ArrayBytes / sizeof(std::uint32_t) / columns), source(rows * width),
          target(rows * width * sizeof(std::uint32_t), 1)
    {
        std::uint32_t value = 1;
        for (std::uint32_t& word : source)
            word = value = value * 1664525U + 1013904223U;
    }

    std::size_t width;
    std::size_t rows;
    std::vector<std::uint32_t> source;
    std::vector<unsigned char> target;
};

template <typename Action>
void run(benchmark::State& state, Action const& action)
{
    Arrays arrays(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        action(arrays);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(arrays.target.size()));
}

void shuffle(benchmark::State& state)
{
    run(state, [](Arrays& arrays) {
        Zyl2Util::ShuffleColumns(arrays.source.data(), arrays.rows, arrays.width,
                                 arrays.target.data());
    });
}

void copy(benchmark::State& state)
{
    run(state, [](Arrays& arrays) {
        std::memcpy(arrays.target.data(), arrays.source.data(), arrays.target.size());
    });
}

} // namespace

BENCHMARK(shuffle)->ArgName("width")->DenseRange(1, 6)->Arg(8)->Unit(benchmark::kMillisecond);
BENCHMARK(copy)->ArgName("width")->DenseRange(1, 6)->Arg(8)->Unit(benchmark::kMillisecond);
