#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace MoxRead {

/// A regular file, open for reading at any offset.
class InputFile
{
public:
    explicit InputFile(const std::string& path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    std::uint64_t size() const noexcept;
    void read(std::uint64_t offset, std::uint8_t* to, std::size_t count) const;

private:
    void requireRegular();

    int descriptor_ = -1;
    std::uint64_t size_ = 0;
};

} // namespace MoxRead
