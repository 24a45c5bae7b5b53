#ifndef ZYL2_MOX2_RECOVERY_BYTEREADER_H
#define ZYL2_MOX2_RECOVERY_BYTEREADER_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

/// A record holds what no run can have put there.
class DamagedRecord : public std::runtime_error
{
public:
    DamagedRecord() : std::runtime_error("a record is not what a run writes") {}
};

/// Takes what `ByteWriter` has put. Nothing is taken for granted.
class ByteReader
{
public:
    ByteReader(unsigned char const* first, std::size_t size) : next_(first), left_(size) {}

    std::size_t left() const { return left_; }

    template <typename T>
    T get()
    {
        T value{};
        take(value);
        return value;
    }

    /// Number of elements that follow, each of which takes so many bytes at least.
    std::size_t count(std::size_t smallest = 1) { return checked(get<std::uint32_t>(), smallest); }
    std::size_t wideCount(std::size_t smallest = 1)
    {
        return checked(get<std::uint64_t>(), smallest);
    }

    /// \throws DamagedRecord something is left
    void expectEnd() const
    {
        if (left_ != 0)
            throw DamagedRecord();
    }

private:
    static std::size_t const wideCharacter = sizeof(wchar_t);

    unsigned char const* bytes(std::size_t count)
    {
        if (count > left_)
            throw DamagedRecord();
        unsigned char const* const first = next_;
        next_ += count;
        left_ -= count;
        return first;
    }

    std::size_t checked(std::uint64_t number, std::size_t smallest) const
    {
        if (number > left_ / smallest)
            throw DamagedRecord();
        return static_cast<std::size_t>(number);
    }

    template <typename T>
    std::enable_if_t<std::is_arithmetic_v<T>> take(T& value)
    {
        // Any byte that is not 0 stands for true; a bool may be nothing else.
        if constexpr (std::is_same_v<T, bool>)
            value = *bytes(1) != 0;
        else
            std::memcpy(&value, bytes(sizeof value), sizeof value);
    }

    void take(std::string& text)
    {
        std::size_t const length = count();
        text.assign(reinterpret_cast<char const*>(bytes(length)), length);
    }

    void take(std::wstring& text)
    {
        text.resize(count(wideCharacter));
        unsigned char const* const characters = bytes(text.size() * wideCharacter);
        if (!text.empty())
            std::memcpy(text.data(), characters, text.size() * wideCharacter);
    }

    template <typename T>
    void take(std::vector<T>& values)
    {
        std::size_t const number = count();
        values.reserve(number);
        for (std::size_t index = 0; index < number; ++index)
            values.push_back(get<T>());
    }

    unsigned char const* next_;
    std::size_t left_;
};

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2

#endif
