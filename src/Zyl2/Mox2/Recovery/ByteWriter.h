#ifndef ZYL2_MOX2_RECOVERY_BYTEWRITER_H
#define ZYL2_MOX2_RECOVERY_BYTEWRITER_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

/// Puts values side by side; without a place to put them it only counts their bytes.
class ByteWriter
{
public:
    ByteWriter() = default;
    explicit ByteWriter(unsigned char* place) : place_(place) {}

    std::size_t size() const { return size_; }

    void bytes(void const* source, std::size_t count)
    {
        if (place_ != nullptr && count != 0)
            std::memcpy(place_ + size_, source, count);
        size_ += count;
    }

    template <typename T>
    std::enable_if_t<std::is_arithmetic_v<T>> put(T value)
    {
        bytes(&value, sizeof value);
    }

    void count(std::size_t number) { put(static_cast<std::uint32_t>(number)); }

    void put(std::string const& text)
    {
        count(text.size());
        bytes(text.data(), text.size());
    }

    void put(std::wstring const& text)
    {
        count(text.size());
        bytes(text.data(), text.size() * sizeof(wchar_t));
    }

    template <typename T>
    void put(std::vector<T> const& values)
    {
        count(values.size());
        // By value: the bits of a std::vector<bool> have no address.
        for (auto const value : values)
            put(static_cast<T>(value));
    }
    void put(std::vector<std::string> const& texts) { putTexts(texts); }
    void put(std::vector<std::wstring> const& texts) { putTexts(texts); }

private:
    template <typename T>
    void putTexts(std::vector<T> const& texts)
    {
        count(texts.size());
        for (T const& text : texts)
            put(text);
    }

    unsigned char* place_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2

#endif
