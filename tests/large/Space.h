#ifndef TESTS_LARGE_SPACE_H
#define TESTS_LARGE_SPACE_H

#include <cstdint>
#include <filesystem>

namespace Large {

/// What the folder for temporary files can take. TMPDIR chooses another one.
inline std::uint64_t availableSpace()
{
    return std::filesystem::space(std::filesystem::temp_directory_path()).available;
}

} // namespace Large

#endif
