#include "ranks/Ranks.h"

#include "Measurement.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <iostream>

namespace Bench {

Ranks::Ranks(int* argc, char*** argv)
{
    int provided = 0;
    MPI_Init_thread(argc, argv, MPI_THREAD_FUNNELED, &provided);
    MPI_Comm_rank(MPI_COMM_WORLD, &rank_);
    MPI_Comm_size(MPI_COMM_WORLD, &size_);
}

Ranks::~Ranks()
{
    MPI_Finalize();
}

TransientResult blockOf(Ranks const& ranks, Arguments const& arguments)
{
    TransientResult result = transientResult(arguments.number("edge"), arguments.number("steps"));
    auto const before = static_cast<std::uint32_t>(ranks.rank());
    for (std::uint32_t& id : result.mesh.nodeIds)
        id += before * static_cast<std::uint32_t>(result.mesh.nodes);
    for (std::uint32_t& id : result.mesh.cellIds)
        id += before * static_cast<std::uint32_t>(result.mesh.cells);
    return result;
}

void measureRanks(Ranks const& ranks, std::string const& folder, std::uint64_t bytes,
                  std::function<double()> const& action)
{
    std::uint64_t const before = residentBytes();
    MPI_Barrier(MPI_COMM_WORLD);
    double closing = 0;
    double const elapsed = secondsOf([&] {
        closing = action();
        MPI_Barrier(MPI_COMM_WORLD);
    });
    std::uint64_t const beyond = peakResidentBytes() - std::min(peakResidentBytes(), before);
    std::uint64_t all = 0;
    std::uint64_t largest = 0;
    double slowest = 0;
    MPI_Reduce(&closing, &slowest, 1, MPI_DOUBLE, MPI_MAX, 0, MPI_COMM_WORLD);
    MPI_Reduce(&bytes, &all, 1, MPI_UINT64_T, MPI_SUM, 0, MPI_COMM_WORLD);
    MPI_Reduce(&beyond, &largest, 1, MPI_UINT64_T, MPI_MAX, 0, MPI_COMM_WORLD);
    if (ranks.rank() != 0)
        return;
    std::cout.precision(9);
    std::cout << "{\"seconds\": " << elapsed << ", \"close_seconds\": " << slowest
              << ", \"bytes_in\": " << all << ", \"file_bytes\": " << bytesOfFolder(folder)
              << ", \"peak_beyond_host\": " << largest << "}\n";
}

double secondsOf(std::function<void()> const& action)
{
    auto const start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

int runRanks(int argc, char** argv,
             std::function<void(Ranks const&, Arguments const&)> const& write)
{
    Ranks const ranks(&argc, &argv);
    try {
        write(ranks, Arguments(argv + 1, argv + argc));
        return 0;
    } catch (std::exception const& error) {
        std::cerr << error.what() << '\n';
        MPI_Abort(MPI_COMM_WORLD, 1);
        return 1;
    }
}

} // namespace Bench
