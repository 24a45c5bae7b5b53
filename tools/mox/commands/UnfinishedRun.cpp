#include "UnfinishedRun.h"

#include "RecoverCommand.h"

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/InterruptedRun.h>

#include <cerrno>
#include <memory>
#include <system_error>

#include <sys/mman.h>
#include <unistd.h>

namespace Mox {

namespace {

using Zyl2::Mox2::InterruptedRun;
using Zyl2::Mox2::RunBlock;
using Zyl2::Mox2::RunProgress;

/// A file that is in no folder and goes with the process.
class NamelessFile
{
public:
    NamelessFile() : descriptor_(::memfd_create("outline", MFD_CLOEXEC))
    {
        if (descriptor_ < 0)
            throw std::system_error(errno, std::generic_category(), "no file in memory");
    }
    ~NamelessFile() { ::close(descriptor_); }
    NamelessFile(NamelessFile const&) = delete;
    NamelessFile& operator=(NamelessFile const&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_;
};

UnfinishedFile::Block blockOf(RunBlock const& block)
{
    return {block.slot, block.position, block.size, block.content};
}

/// \return none where the file is of another run
std::optional<UnfinishedFile> outlineOf(std::string const& path)
{
    auto const outline = std::make_shared<NamelessFile>();
    RunProgress const progress = InterruptedRun::writeOutlineOf(path, outline->path());
    if (progress.isOverwritten)
        return std::nullopt;
    UnfinishedFile file;
    file.outline = outline->path();
    file.life = outline;
    file.isGoingOn = progress.isGoingOn;
    file.state = stateOfRun(progress, path);
    for (RunBlock const& block : progress.blocks)
        file.blocks.push_back(blockOf(block));
    return file;
}

} // namespace

std::optional<UnfinishedFile> findUnfinishedRun(std::string const& path)
{
    if (!InterruptedRun::isBeside(path))
        return std::nullopt;
    try {
        return outlineOf(path);
    } catch (Zyl2::Exception::Exception const&) {
        // The file itself says what it lacks, and what is beside it, why it is of no use.
        return std::nullopt;
    }
}

} // namespace Mox
