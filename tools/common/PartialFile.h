#ifndef COMMON_PARTIALFILE_H
#define COMMON_PARTIALFILE_H

#include "TemporaryPath.h"

#include <filesystem>

namespace Common {

/// An output file that comes into being whole or not at all: it is written under a temporary name
/// in the folder of its target, and removed again unless it was published.
class PartialFile
{
public:
    /// Creates the temporary file; throws std::runtime_error when the target exists and must not be
    /// overwritten, when it exists and is no regular file, or when the system refuses.
    PartialFile(std::filesystem::path const& target, bool overwrite);

    std::filesystem::path const& path() const { return temporary_.path(); }

    /// Gives the file its target's name, in one step that leaves either the old or the new file.
    void publish();

private:
    void publishWithoutOverwriting();

    std::filesystem::path target_;
    bool overwrite_;
    TemporaryPath temporary_;
};

} // namespace Common

#endif
