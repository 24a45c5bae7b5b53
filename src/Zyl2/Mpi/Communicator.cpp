#include "Zyl2/Mpi/Communicator.h"

#include "Zyl2/Mpi/Failure.h"

namespace Zyl2 {
namespace Mpi {

namespace Sites = Exception::Sites::Mpi;

Communicator::~Communicator()
{
    // The communicator is gone once MPI is finalised, and must not be freed any more.
    int isFinalized = 0;
    MPI_Finalized(&isFinalized);
    if (comm_ != MPI_COMM_NULL && isFinalized == 0)
        MPI_Comm_free(&comm_);
}

int Communicator::rank() const
{
    int rank = 0;
    MPI_Comm_rank(comm_, &rank);
    return rank;
}

int Communicator::size() const
{
    int size = 0;
    MPI_Comm_size(comm_, &size);
    return size;
}

Communicator copyOf(MPI_Comm comm)
{
    MPI_Comm copy = MPI_COMM_NULL;
    if (MPI_Comm_dup(comm, &copy) != MPI_SUCCESS)
        raiseWith(Sites::RanksNotCopied, "MPI can't copy the ranks");
    // A host may have asked for errors to be returned, as Python does. Half of a message is of no
    // use, and whoever waits for the rest of it would wait for ever.
    MPI_Comm_set_errhandler(copy, MPI_ERRORS_ARE_FATAL);
    return Communicator(copy);
}

Communicator ranksOfFile(Communicator const& all, int ranksPerFile)
{
    MPI_Comm file = MPI_COMM_NULL;
    int const rank = all.rank();
    if (ranksPerFile == 0)
        MPI_Comm_split_type(all.get(), MPI_COMM_TYPE_SHARED, rank, MPI_INFO_NULL, &file);
    else
        MPI_Comm_split(all.get(), rank / ranksPerFile, rank, &file);
    return Communicator(file);
}

Communicator writersOf(Communicator const& all, Communicator const& file)
{
    MPI_Comm writers = MPI_COMM_NULL;
    MPI_Comm_split(all.get(), file.rank() == 0 ? 0 : MPI_UNDEFINED, all.rank(), &writers);
    return Communicator(writers);
}

} // namespace Mpi
} // namespace Zyl2
