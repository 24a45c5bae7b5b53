#include "Zyl2/Mpi/Agreement.h"

#include <Zyl2/Mpi/RankFailure.h>

#include "Zyl2/Exception/Raise.h"

namespace Zyl2 {
namespace Mpi {

namespace Sites = Exception::Sites::Mpi;

namespace {

[[noreturn]] void raiseFailureOf(int rank, Communicator const& all, Failure const& own)
{
    Failure failure = own;
    MPI_Bcast(&failure.code, 1, MPI_INT, rank, all.get());
    MPI_Bcast(failure.sentence.data(), static_cast<int>(failure.sentence.size()), MPI_CHAR, rank,
              all.get());
    Exception::raise(RankFailure(rank, failure.code, failure.sentence.data()),
                     Sites::RankFailed.source, Sites::RankFailed.line, Sites::RankFailed.function);
}

} // namespace

void agree(Communicator const& all, CollectiveCall call, Failure const& own)
{
    int const size = all.size();
    int const number = static_cast<int>(call);
    // The lowest rank that failed, the lowest call and the highest.
    std::array<int, 3> const mine = {own.isThere ? all.rank() : size, number, -number};
    std::array<int, 3> lowest = mine;
    MPI_Allreduce(mine.data(), lowest.data(), static_cast<int>(mine.size()), MPI_INT, MPI_MIN,
                  all.get());
    if (lowest[0] != size)
        raiseFailureOf(lowest[0], all, own);
    if (lowest[1] != -lowest[2])
        raiseWith(Sites::OtherCall, "some ranks make another collective call than others");
}

bool areAlike(Communicator const& all, std::uint64_t number)
{
    // The lowest of them and, as its complement, the highest.
    std::array<std::uint64_t, 2> const mine = {number, ~number};
    std::array<std::uint64_t, 2> lowest = mine;
    MPI_Allreduce(mine.data(), lowest.data(), static_cast<int>(mine.size()), MPI_UINT64_T, MPI_MIN,
                  all.get());
    return lowest[0] == ~lowest[1];
}

} // namespace Mpi
} // namespace Zyl2
