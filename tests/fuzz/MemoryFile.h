#ifndef TESTS_FUZZ_MEMORYFILE_H
#define TESTS_FUZZ_MEMORYFILE_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace Fuzz {

/// A regular file that lies in memory only, with a path that it can be opened by.
class MemoryFile
{
public:
    MemoryFile(std::uint8_t const* bytes, std::size_t size);
    ~MemoryFile();
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;

    std::string const& path() const { return path_; }

private:
    int descriptor_;
    std::string path_;
};

} // namespace Fuzz

#endif
