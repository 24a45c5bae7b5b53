#include "FileEnds.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <string>
#include <system_error>

namespace Gmsh {

namespace {

bool isBeginningOf(std::string const& text, std::string const& whole)
{
    return text.size() < whole.size() && whole.compare(0, text.size(), text) == 0;
}

/// Whether a line ends a section. Sections that nobody knows are allowed.
bool endsSection(std::string const& line)
{
    static constexpr std::array<char const*, 14> known = {"$EndMeshFormat",
                                                          "$EndPhysicalNames",
                                                          "$EndEntities",
                                                          "$EndPartitionedEntities",
                                                          "$EndNodes",
                                                          "$EndElements",
                                                          "$EndPeriodic",
                                                          "$EndGhostElements",
                                                          "$EndParametrizations",
                                                          "$EndInterpolationScheme",
                                                          "$EndNodeData",
                                                          "$EndElementData",
                                                          "$EndElementNodeData",
                                                          "$EndComments"};
    if (line.compare(0, 4, "$End") != 0)
        return false;
    if (std::find(known.begin(), known.end(), line) != known.end())
        return true;
    return std::none_of(known.begin(), known.end(),
                        [&line](char const* ending) { return isBeginningOf(line, ending); });
}

} // namespace

bool hasBeginning(std::filesystem::path const& path)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored))
        return false;
    std::string const expected = "$MeshFormat";
    std::string beginning(expected.size(), '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(&beginning[0], static_cast<std::streamsize>(beginning.size()));
    return file && beginning == expected;
}

bool hasEnding(std::filesystem::path const& path)
{
    constexpr std::streamoff longestEnding = 4096;
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    std::streamoff const size = file.tellg();
    if (size <= 0)
        return false;
    std::streamoff const length = std::min(size, longestEnding);
    std::string text(static_cast<std::size_t>(length), '\0');
    file.seekg(size - length);
    file.read(&text[0], length);
    text.erase(text.find_last_not_of(" \t\r\n") + 1);
    std::size_t const lineEnd = text.find_last_of("\r\n");
    std::size_t const line = lineEnd == std::string::npos ? 0 : lineEnd + 1;
    return file && endsSection(text.substr(line));
}

} // namespace Gmsh
