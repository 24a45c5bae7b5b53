#ifndef ZYL2_UTIL_BUFFER_H
#define ZYL2_UTIL_BUFFER_H

#include <cstddef>

namespace Zyl2Util {

/// Bytes that can grow without being copied, however many they are.
///
/// Small buffers come from `malloc`. Large ones are mapped, and grow by moving their pages: whether
/// `realloc` does the same depends on what a host freed before.
class Buffer
{
public:
    /// From so many bytes on a buffer is mapped.
    static constexpr std::size_t LargeSize = 4194304;

    Buffer() noexcept = default;
    Buffer(Buffer&& other) noexcept;
    Buffer& operator=(Buffer&& other) noexcept;
    Buffer(Buffer const&) = delete;
    Buffer& operator=(Buffer const&) = delete;
    ~Buffer();

    /// A buffer over memory that somebody else holds for as long as it is used. It doesn't grow,
    /// and releases nothing.
    static Buffer Borrow(unsigned char* data, std::size_t size) noexcept;

    /// Gives the buffer `size` bytes, not fewer than it has. What it held stays.
    /// \return whether there was memory; without, nothing changes
    bool Grow(std::size_t size) noexcept;

    /// Gives pages behind the first `size` bytes back. What isn't mapped, or would no longer be,
    /// stays.
    void Shrink(std::size_t size) noexcept;

    /// Asks the system for huge pages: taking hundreds of megabytes page by page costs as much as
    /// shuffling them. Small buffers stay as they are.
    void PreferHugePages() noexcept;

    unsigned char* GetData() const noexcept { return data_; }
    std::size_t GetSize() const noexcept { return size_; }
    bool IsBorrowed() const noexcept { return isBorrowed_; }

private:
    bool IsMapped() const noexcept { return size_ >= LargeSize && !isBorrowed_; }

    unsigned char* data_ = nullptr;
    std::size_t size_ = 0;
    bool isBorrowed_ = false;
};

} // namespace Zyl2Util

#endif
