#ifndef ZYL2_MPI_CALLSTREAM_H
#define ZYL2_MPI_CALLSTREAM_H

#include "Zyl2/Mpi/Calls.h"
#include "Zyl2/Mpi/Inbox.h"
#include "Zyl2/Mpi/Outbox.h"

#include <cstdint>

namespace Zyl2 {
namespace Mpi {

/// What follows in a stream of calls.
enum class CallKind : std::uint8_t
{
    Node = 1,
    NodeData = 2,
    Array = 3
};

/// Makes bytes of calls.
class CallEncoder
{
public:
    explicit CallEncoder(Outbox& to) : to_(to) {}

    void put(NodeCall const& call);
    void put(NodeDataCall const& call);
    /// The values are to follow.
    void put(ArrayCall const& call);
    /// Puts them as they are stored: as floats or unsigned integers, row after row.
    /// \param values without one that does not fit
    void putValues(Mox2::ArrayView const& values);

private:
    class Parts;

    Outbox& to_;
};

/// Makes calls of bytes.
class CallDecoder
{
public:
    explicit CallDecoder(Inbox& from) : from_(from) {}

    CallKind takeKind();
    NodeCall takeNode();
    NodeDataCall takeNodeData();
    ArrayCall takeArray();

private:
    class Parts;

    Inbox& from_;
};

} // namespace Mpi
} // namespace Zyl2

#endif
