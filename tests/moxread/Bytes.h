#ifndef TESTS_MOXREAD_BYTES_H
#define TESTS_MOXREAD_BYTES_H

#include <cstdint>
#include <string>

namespace MoxReadTest {

/// Bytes that a test puts together by hand, value by value.
class Bytes
{
public:
    Bytes() = default;
    explicit Bytes(std::string bytes);

    Bytes& u8(unsigned value);
    Bytes& u32(std::uint64_t value);
    Bytes& u64(std::uint64_t value);
    Bytes& f32(float value);
    Bytes& f64(double value);
    Bytes& text(std::string const& value);
    Bytes& raw(std::string const& value);

    std::string const& str() const;

private:
    Bytes& littleEndian(std::uint64_t value, unsigned size);

    std::string bytes_;
};

} // namespace MoxReadTest

#endif
