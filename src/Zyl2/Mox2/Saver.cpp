#include "Zyl2/Mox2/Saver.h"

#include "Zyl2/Mox/BlockNames.h"
#include "Zyl2/Mox2/Recovery/Recorder.h"
#include "Zyl2/Mox2/SaveSettings.h"
#include "Zyl2/Util/Files.h"
#include "Zyl2/Wvf/Globals.h"
#include "Zyl2/Wvf/KeptBlocks.h"

#include <memory>
#include <utility>

namespace Zyl2 {
namespace Mox2 {

void Saver::extractFrom(Database& database)
{
    database.assertEmpty();
    SaverOptions const& options = getOptions();
    SaveSettings const settings(options);
    // Set before anything can fail, so that a host whose file could not be opened has to close the
    // model before it saves it to another one.
    database.openedForReading = false;
    database.openedForWriting = true;
    database.tree = std::make_shared<Zyl2Mox::Tree>();

    Zyl2Mox::Tree& tree = *database.tree;
    std::unique_ptr<Zyl2Wvf::KeptBlocks> kept;
    if (settings.isRecoverable && hasFile())
        kept = std::make_unique<Zyl2Wvf::KeptBlocks>(path(), options.overwrite);
    Zyl2Wvf::Index& index = tree.GetFile().GetIndex();
    index.SetEncoder(settings.encoder);
    if (settings.blockSize)
        index.SetBlockSize(*settings.blockSize);
    if (openFile(tree)) {
        tree.SetFormatVersion(Zyl2Wvf::mox_file_version);
        tree.GetFile().WriteHeader();
        if (settings.threads != 0)
            index.CompressInThreads(settings.threads, tree.GetFile().GetStream());
        if (kept != nullptr) {
            kept->Mark(tree.GetFile().GetStream());
            database.recorder = std::make_unique<Recovery::Recorder>(*kept, settings, options);
            tree.GetFile().KeepUnsaved(Zyl2Mox::BlockNames::HeavyData, std::move(kept));
        }
    }
    if (!options.text1.empty())
        tree.GetScratchModifierInfo().SetTexts(options.text1, options.text2);
}

bool Saver::hasFile() const
{
    return !getFile().path.empty() || !getFile().widePath.empty();
}

/// The path that the system is asked for; a wide one is narrowed.
std::string Saver::path() const
{
    return getFile().path.empty() ? Zyl2Util::Narrowed(getFile().widePath) : getFile().path;
}

/// \return whether there is a file; without a path there is none
bool Saver::openFile(Zyl2Mox::Tree& tree) const
{
    Base::File const& file = getFile();
    bool const overwrite = getOptions().overwrite;
    if (!file.path.empty())
        tree.GetFile().OpenFileForWriting(file.path, overwrite);
    else if (!file.widePath.empty())
        tree.GetFile().OpenFileForWriting(file.widePath, overwrite);
    else
        return false;
    return true;
}

} // namespace Mox2
} // namespace Zyl2
