#include "Export.h"

#include <filesystem>

namespace Export {

bool isExportTarget(std::string const& path)
{
    std::string const ending = std::filesystem::path(path).extension().string();
    return ending == ".vtu" || ending == ".vtm" || ending == ".pvd";
}

} // namespace Export
