#ifndef ZYL2_MPI_COMMUNICATOR_H
#define ZYL2_MPI_COMMUNICATOR_H

#include <mpi.h>

#include <utility>

namespace Zyl2 {
namespace Mpi {

/// A communicator of our own, freed when this is destroyed. Making and destroying it is collective.
class Communicator
{
public:
    /// No ranks.
    Communicator() = default;
    explicit Communicator(MPI_Comm own) : comm_(own) {}
    ~Communicator();
    Communicator(Communicator&& other) noexcept : comm_(other.comm_)
    {
        other.comm_ = MPI_COMM_NULL;
    }
    /// Frees this one with the other.
    Communicator& operator=(Communicator&& other) noexcept
    {
        std::swap(comm_, other.comm_);
        return *this;
    }
    Communicator(Communicator const&) = delete;
    Communicator& operator=(Communicator const&) = delete;

    MPI_Comm get() const { return comm_; }
    int rank() const;
    int size() const;

private:
    MPI_Comm comm_ = MPI_COMM_NULL;
};

/// What messages of the same ranks stay apart in. An error of MPI in it, and in what is made of it,
/// ends the program.
/// \throws Exception::InvalidArguments MPI refuses
Communicator copyOf(MPI_Comm comm);

/// The ranks that share a file with this one, in their order.
/// \param ranksPerFile 0 for those of one machine
Communicator ranksOfFile(Communicator const& all, int ranksPerFile);

/// The first ranks of all files, in their order; no ranks on the others.
Communicator writersOf(Communicator const& all, Communicator const& file);

} // namespace Mpi
} // namespace Zyl2

#endif
