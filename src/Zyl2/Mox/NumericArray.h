#ifndef ZYL2_MOX_NUMERICARRAY_H
#define ZYL2_MOX_NUMERICARRAY_H

#include <cstddef>
#include <cstdint>

namespace Zyl2Mox {

/// What the values of an array are made of, as it stands in the file.
enum class ElementCode : std::uint8_t
{
    None = 0,
    Float = 1,
    UnsignedInt = 5
};

/// Describes an array of 4-byte values that somebody else holds.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): never deleted through a base
class NumericArray final
{
public:
    NumericArray() = default;

    /// \param data     the values; must outlive this description
    /// \param byteCount bytes of all values
    /// \param width    values per row
    /// \param element  what the values are
    NumericArray(void const* data, std::size_t byteCount, std::uint8_t width, ElementCode element);

    /// Values per row.
    virtual std::uint8_t GetWidth() const;
    /// Number of values: rows times width.
    virtual std::size_t GetNumElements() const;

    void const* GetData() const { return data_; }
    std::size_t GetByteCount() const { return byteCount_; }
    ElementCode GetElementCode() const { return element_; }

private:
    void const* data_ = nullptr;
    std::size_t byteCount_ = 0;
    std::uint8_t width_ = 0;
    ElementCode element_ = ElementCode::None;
};

} // namespace Zyl2Mox

#endif
