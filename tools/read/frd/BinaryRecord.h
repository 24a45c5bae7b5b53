#ifndef READ_FRD_BINARYRECORD_H
#define READ_FRD_BINARYRECORD_H

#include <cstddef>
#include <cstdint>

namespace Frd {

/// Takes the numbers of one binary record from front to back.
class BinaryRecord
{
public:
    explicit BinaryRecord(char const* bytes) : next_(bytes) {}

    std::int32_t integer();

    /// A real number of `size` bytes: a float or a double.
    double real(std::size_t size);

private:
    char const* next_;
};

} // namespace Frd

#endif
