#ifndef MOX_PRINT_UNFINISHEDFILE_H
#define MOX_PRINT_UNFINISHEDFILE_H

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Mox {

/// What is known of a model file that is not whole, because its run goes on or was killed.
struct UnfinishedFile
{
    struct Block
    {
        std::uint64_t slot = 0;
        /// Where it is in the file, and how many bytes it takes there; 0 while it is not.
        std::uint64_t position = 0;
        std::uint64_t size = 0;
        std::uint64_t content = 0;
    };

    /// A model file of what was added, without values.
    std::string outline;
    /// The outline is there for as long as this.
    std::shared_ptr<void const> life;
    bool isGoingOn = false;
    /// How far the run has come, and what can be done, in words that follow on "incomplete".
    std::string state;
    /// The blocks that hold values of datasets.
    std::vector<Block> blocks;
};

/// Looks for what is known of a file; finds nothing where there is nothing but the file itself.
using UnfinishedFiles = std::function<std::optional<UnfinishedFile>(std::string const& path)>;

/// Sets who looks from here on. Reading knows nothing of writing: without, nothing is found.
void lookForUnfinishedFiles(UnfinishedFiles finder);

/// Runs one of two actions on a model file. That for whole ones may raise FormatError.
void onWholeOrUnfinished(std::string const& path, std::function<void()> const& onWhole,
                         std::function<void(UnfinishedFile const&)> const& onUnfinished);

} // namespace Mox

#endif
