#include "Exodus.h"

#include "FileSource.h"

namespace Exodus {

std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report)
{
    return std::make_unique<FileSource>(path, report);
}

} // namespace Exodus
