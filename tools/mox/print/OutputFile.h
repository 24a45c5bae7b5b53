#ifndef MOX_PRINT_OUTPUTFILE_H
#define MOX_PRINT_OUTPUTFILE_H

#include "FileBuffer.h"

#include "common/PartialFile.h"

#include <ostream>
#include <string>

namespace Mox {

/// A file that a command makes: it gets its name when all of it is written, or not at all.
class OutputFile
{
public:
    /// Throws std::runtime_error when the file exists and must not be overwritten, or when the
    /// system refuses.
    OutputFile(std::string const& path, bool overwrite);

    std::ostream& stream() { return stream_; }

    /// Throws std::runtime_error when not all could be written.
    void finish();

private:
    Common::PartialFile file_;
    FileBuffer buffer_;
    std::ostream stream_;
};

} // namespace Mox

#endif
