#ifndef COMMON_PARTIALFILE_H
#define COMMON_PARTIALFILE_H

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
    ~PartialFile();

    PartialFile(PartialFile const&) = delete;
    PartialFile& operator=(PartialFile const&) = delete;

    /// Removes what a process that crashed has left of such a file.
    static void removeLeftBy(int process, std::filesystem::path const& target);

    std::filesystem::path const& path() const { return path_; }

    /// Gives the file its target's name, in one step that leaves either the old or the new file.
    void publish();

private:
    void create();
    void publishWithoutOverwriting();

    std::filesystem::path target_;
    std::filesystem::path path_;
    bool overwrite_;
    bool isPublished_ = false;
};

} // namespace Common

#endif
