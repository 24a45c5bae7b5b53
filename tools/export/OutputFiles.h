#ifndef EXPORT_OUTPUTFILES_H
#define EXPORT_OUTPUTFILES_H

#include "common/TemporaryPath.h"

#include <filesystem>

namespace Export {

/// A file, and a folder beside it that is named like the file without ending, which come into being
/// together or not at all: they are made in a temporary folder, which is removed again.
class OutputFiles
{
public:
    /// Throws `std::runtime_error` when there is something in the way that must not be replaced, or
    /// when the system refuses. Of what is replaced, a folder may hold nothing but .vtu and .vtm
    /// files: it might not be a result of ours.
    OutputFiles(std::filesystem::path const& target, bool overwrite);
    OutputFiles(OutputFiles const&) = delete;
    OutputFiles& operator=(OutputFiles const&) = delete;

    /// Where to write the file; what it refers to is relative to it.
    std::filesystem::path file() const;
    /// Where to write what belongs into the folder, which exists.
    std::filesystem::path folder() const;

    /// Gives file and folder their names, and removes what they replace.
    void publish();

private:
    void moveAll();
    void moveToTarget(std::filesystem::path const& name);
    void moveAway(std::filesystem::path const& name);
    void moveBack(std::filesystem::path const& name) noexcept;

    std::filesystem::path target_;
    bool overwrite_;
    Common::TemporaryPath temporary_;
};

} // namespace Export

#endif
