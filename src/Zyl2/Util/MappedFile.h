#ifndef ZYL2_UTIL_MAPPEDFILE_H
#define ZYL2_UTIL_MAPPEDFILE_H

#include <cstddef>

namespace Zyl2Util {

/// A file whose bytes are in memory, and in the file as soon as they are written there: they
/// outlive the process, however it ends.
class MappedFile
{
public:
    /// \param descriptor of a file that is open for reading and writing; this object closes it
    explicit MappedFile(int descriptor) noexcept : descriptor_(descriptor) {}
    ~MappedFile();
    MappedFile(MappedFile const&) = delete;
    MappedFile& operator=(MappedFile const&) = delete;

    /// Gives the file `size` bytes, more than it has, and reserves room for them: touching
    /// them never fails for lack of it. What it held stays, and may be elsewhere in memory. \return
    /// 0, or the number of the system's error; nothing changes then
    int Grow(std::size_t size) noexcept;

    /// Waits until the bytes are on the disk.
    /// \return 0, or the number of the system's error
    int Synchronise() const noexcept;

    unsigned char* GetData() const noexcept { return data_; }
    std::size_t GetSize() const noexcept { return size_; }

private:
    int descriptor_;
    unsigned char* data_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace Zyl2Util

#endif
