#include "UnfinishedFile.h"

#include "moxread/FormatError.h"

#include <utility>

namespace Mox {

namespace {

UnfinishedFiles& finder()
{
    static UnfinishedFiles installed;
    return installed;
}

std::optional<UnfinishedFile> unfinishedFile(std::string const& path)
{
    return finder() ? finder()(path) : std::nullopt;
}

/// \return whether one of the actions was run to its end
bool isSeen(std::string const& path, std::function<void()> const& onWhole,
            std::function<void(UnfinishedFile const&)> const& onUnfinished)
{
    std::optional<UnfinishedFile> const unfinished = unfinishedFile(path);
    // While the file is being completed it may look as if it was.
    if (!unfinished || !unfinished->isGoingOn) {
        try {
            onWhole();
            return true;
        } catch (MoxRead::FormatError const&) {
            if (!unfinished)
                return false;
        }
    }
    onUnfinished(*unfinished);
    return true;
}

} // namespace

void lookForUnfinishedFiles(UnfinishedFiles newFinder)
{
    finder() = std::move(newFinder);
}

void onWholeOrUnfinished(std::string const& path, std::function<void()> const& onWhole,
                         std::function<void(UnfinishedFile const&)> const& onUnfinished)
{
    if (!finder())
        return onWhole();
    // A run may begin or end between two looks, but not all the time.
    constexpr int looks = 2;
    for (int look = 0; look < looks; ++look)
        if (isSeen(path, onWhole, onUnfinished))
            return;
    onWhole();
}

} // namespace Mox
