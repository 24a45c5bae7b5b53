#include "NamelessFile.h"

#include "exchange/Error.h"

#include <fcntl.h>
#include <unistd.h>

namespace Gmsh {

NamelessFile::NamelessFile(std::filesystem::path const& path)
    : descriptor_(::open(path.c_str(), O_RDONLY | O_CLOEXEC))
{
    if (descriptor_ < 0)
        throw Exchange::Error("The file cannot be opened.");
}

NamelessFile::~NamelessFile()
{
    ::close(descriptor_);
}

std::string NamelessFile::path() const
{
    return "/proc/self/fd/" + std::to_string(descriptor_);
}

} // namespace Gmsh
