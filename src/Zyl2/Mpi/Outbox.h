#ifndef ZYL2_MPI_OUTBOX_H
#define ZYL2_MPI_OUTBOX_H

#include <cstddef>
#include <vector>

#include <mpi.h>

namespace Zyl2 {
namespace Mpi {

/// What a rank keeps for its writer, in the messages that it will be sent in.
class Outbox
{
public:
    /// \param messageBytes the most bytes of a message
    explicit Outbox(std::size_t messageBytes) : messageBytes_(messageBytes) {}

    void put(void const* bytes, std::size_t count);

    /// Sends all of it to rank 0, and is empty then. Takes no memory.
    void sendTo(MPI_Comm file);
    void clear();

private:
    std::vector<unsigned char>& openMessage();

    std::size_t messageBytes_;
    std::vector<std::vector<unsigned char>> messages_;
};

} // namespace Mpi
} // namespace Zyl2

#endif
