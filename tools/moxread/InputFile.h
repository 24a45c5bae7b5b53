#ifndef MOXREAD_INPUTFILE_H
#define MOXREAD_INPUTFILE_H

#include "moxread/Export.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace MoxRead {

/// A regular file, open for reading at any offset.
class MOXREAD_EXPORT InputFile
{
public:
    /// Raises FormatError when the system refuses or when it is no regular file.
    explicit InputFile(std::string const& path);
    ~InputFile();
    InputFile(InputFile const&) = delete;
    InputFile& operator=(InputFile const&) = delete;

    std::uint64_t size() const noexcept;
    /// Reads exactly `count` bytes from `offset` on. Raises FormatError when the file ends before
    /// or when the system refuses.
    void read(std::uint64_t offset, std::uint8_t* to, std::size_t count) const;

private:
    void requireRegular();

    int descriptor_ = -1;
    std::uint64_t size_ = 0;
};

} // namespace MoxRead

#endif
