#include "LinkToFile.h"

#include "exchange/Error.h"

#include <string>
#include <system_error>

#include <stdlib.h>

namespace Gmsh {

LinkToFile::LinkToFile(std::filesystem::path const& file)
{
    std::error_code error;
    std::string name = (std::filesystem::temp_directory_path(error) / "mox-XXXXXX").string();
    if (error || ::mkdtemp(&name[0]) == nullptr)
        throw Exchange::Error("A temporary folder cannot be made.");
    folder_ = name;
    std::filesystem::create_symlink(std::filesystem::absolute(file), path(), error);
    if (error) {
        std::filesystem::remove(folder_, error);
        throw Exchange::Error("A link in a temporary folder cannot be made.");
    }
}

LinkToFile::~LinkToFile()
{
    std::error_code ignored;
    std::filesystem::remove(path(), ignored);
    std::filesystem::remove(folder_, ignored);
}

std::filesystem::path LinkToFile::path() const
{
    return folder_ / "mesh.msh";
}

} // namespace Gmsh
