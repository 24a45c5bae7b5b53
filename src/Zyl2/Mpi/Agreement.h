#ifndef ZYL2_MPI_AGREEMENT_H
#define ZYL2_MPI_AGREEMENT_H

#include "Zyl2/Mpi/Communicator.h"
#include "Zyl2/Mpi/Failure.h"

#include <cstdint>

namespace Zyl2 {
namespace Mpi {

/// What a collective call is: ranks that make different ones are told so.
enum class CollectiveCall : int
{
    Open = 1,
    Step = 2,
    Close = 3,
    Abandon = 4,
    Checkpoint = 5
};

/// Lets all ranks know whether one of them has failed. Collective; it takes no memory.
/// \param own what this rank has failed at, if it has
/// \throws RankFailure one of the ranks has failed: the lowest of them
/// \throws Exception::InvalidObjectState none has, but some make another call
void agree(Communicator const& all, CollectiveCall call, Failure const& own);

/// Whether all ranks give the same number. Collective; it takes no memory.
bool areAlike(Communicator const& all, std::uint64_t number);

} // namespace Mpi
} // namespace Zyl2

#endif
