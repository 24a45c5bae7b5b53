#include "Exodus.h"

#include "Database.h"
#include "FileSource.h"

namespace Exodus {

bool recognises(std::filesystem::path const& path)
{
    return Database::isReadable(path);
}

std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report)
{
    return std::make_unique<FileSource>(path, report);
}

} // namespace Exodus
