#ifndef ZYL2_MOX2_ARRAYSIZE_H
#define ZYL2_MOX2_ARRAYSIZE_H

namespace Zyl2 {
namespace Mox2 {

/// The size as array storage counts it.
/// \throws std::bad_alloc sizes of 2^31 and more
int arraySize(unsigned long size);

} // namespace Mox2
} // namespace Zyl2

#endif
