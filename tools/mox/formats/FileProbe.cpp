#include "FileProbe.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

namespace Mox {

namespace {

constexpr std::size_t beginningSize = 4096;
constexpr std::size_t chunkSize = std::size_t(1) << 20U;
constexpr std::size_t chunksSearched = 64;

std::string beginningOf(std::filesystem::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string bytes(beginningSize, '\0');
    file.read(&bytes[0], static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

std::string trimmed(std::string const& line)
{
    char const* const blanks = " \t\r";
    auto const first = line.find_first_not_of(blanks);
    return first == std::string::npos
               ? std::string()
               : line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

} // namespace

FileProbe::FileProbe(std::filesystem::path path)
    : path_(std::move(path)), isFolder_(std::filesystem::is_directory(path_))
{
    if (std::filesystem::is_regular_file(path_))
        beginning_ = beginningOf(path_);
}

bool FileProbe::startsWith(std::string const& bytes) const
{
    return beginning_.compare(0, bytes.size(), bytes) == 0;
}

bool FileProbe::mentions(std::string const& text) const
{
    return beginning_.find(text) != std::string::npos;
}

bool FileProbe::hasLine(std::string const& line) const
{
    std::istringstream lines(beginning_);
    for (std::string candidate; std::getline(lines, candidate);)
        if (trimmed(candidate) == line)
            return true;
    return false;
}

bool FileProbe::contains(std::string const& bytes) const
{
    std::ifstream file(path_, std::ios::binary);
    std::vector<char> chunk(chunkSize);
    std::string window;
    for (std::size_t i = 0; i < chunksSearched && file; ++i) {
        file.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        window.append(chunk.data(), static_cast<std::size_t>(file.gcount()));
        if (window.find(bytes) != std::string::npos)
            return true;
        // The bytes searched for may lie across two chunks, so the end of one is kept.
        window.erase(0, window.size() - std::min(window.size(), bytes.size()));
    }
    return false;
}

} // namespace Mox
