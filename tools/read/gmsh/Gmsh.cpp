#include "Gmsh.h"

#include "Ending.h"
#include "FileSource.h"

#include "exchange/Error.h"

#include <fstream>
#include <string>
#include <system_error>

namespace Gmsh {

bool recognises(std::filesystem::path const& path)
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

std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report)
{
    if (!recognises(path))
        throw Exchange::Error("The file does not begin as a mesh of Gmsh does: with $MeshFormat.");
    if (!hasEnding(path))
        throw Exchange::Error("The file is cut off: its last section has no end.");
    return std::make_unique<FileSource>(path, report);
}

} // namespace Gmsh
