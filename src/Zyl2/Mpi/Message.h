#ifndef ZYL2_MPI_MESSAGE_H
#define ZYL2_MPI_MESSAGE_H

#include <cstddef>

// What a rank says between two collective calls is one stream of bytes, cut into messages wherever
// one is full:
//
//   offset  size  content
//        0     1  1 in the last message of the stream, else 0
//        1     7  0
//        8   ...  the stream's next bytes
//
// There is at least one message, which may have nothing but its first 8 bytes.

namespace Zyl2 {
namespace Mpi {
namespace Message {

constexpr std::size_t HeaderBytes = 8;
constexpr int Tag = 1;

} // namespace Message
} // namespace Mpi
} // namespace Zyl2

#endif
