// What the programs of many ranks have in common: each rank holds a block of the same size, so that
// there is as much to write for each of them, however many there are.

#ifndef BENCH_RANKS_RANKS_H
#define BENCH_RANKS_RANKS_H

#include "Arguments.h"
#include "HostData.h"

#include <mpi.h>

#include <cstdint>
#include <functional>
#include <string>

namespace Bench {

/// MPI for as long as the program runs.
class Ranks
{
public:
    Ranks(int* argc, char*** argv);
    ~Ranks();
    Ranks(Ranks const&) = delete;
    Ranks& operator=(Ranks const&) = delete;

    int rank() const { return rank_; }
    int size() const { return size_; }

private:
    int rank_ = 0;
    int size_ = 0;
};

/// The block of a rank, whose ids go on from those of the rank before.
TransientResult blockOf(Ranks const& ranks, Arguments const& arguments);

/// Runs what all ranks do from the first call to the closed file, until the last of them is done;
/// the first rank prints what it took as one line of JSON.
/// \param bytes  of this rank's values
/// \param action returns how long closing took, in seconds
void measureRanks(Ranks const& ranks, std::string const& folder, std::uint64_t bytes,
                  std::function<double()> const& action);

/// How long an action takes, in seconds.
double secondsOf(std::function<void()> const& action);

/// The main program: `write` gets the ranks and the flags.
int runRanks(int argc, char** argv,
             std::function<void(Ranks const&, Arguments const&)> const& write);

} // namespace Bench

#endif
