#include "Zyl2/Mox2/Database.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Mox2/Recovery/Recorder.h"

namespace Zyl2 {
namespace Mox2 {

namespace {

namespace DatabaseSites = Exception::Sites::Database;
char const* const notSaved = "saveTo was not called, or the model was closed since";

} // namespace

Database::Database() = default;

Database::~Database() noexcept
{
    closeOrForget();
}

void Database::assertEmpty() const
{
    if (tree != nullptr)
        Exception::raise(DatabaseSites::NotEmpty,
                         "the model was saved before; close it, then it may be saved anew");
}

void Database::assertNotEmpty() const
{
    if (tree == nullptr)
        Exception::raise(DatabaseSites::NotInitialized, notSaved);
}

void Database::assertOpenedForWriting() const
{
    if (tree == nullptr)
        Exception::raise(DatabaseSites::FileNotOpen, notSaved);
    if (!openedForWriting)
        Exception::raise(DatabaseSites::FileNotWritable);
}

void Database::close()
{
    writtenInVain_ = false;
    if (tree == nullptr)
        return;
    bool const hasFile = tree->GetFile().GetStream() != nullptr;
    if (recorder != nullptr && hasFile)
        noteClosing();
    if (openedForWriting)
        tree->FlushAndClose(tree->GetFile(), "");
    if (recorder != nullptr && hasFile && !tree->GetFile().HasLostItsName())
        recorder->forget();
    forgetTree();
}

/// When it can't be noted the file is closed all the same, as after any failure of `close`.
void Database::noteClosing()
{
    try {
        recorder->close();
    } catch (...) {
        tree->GetFile().CloseFile();
        throw;
    }
}

bool Database::checkpoint()
{
    assertOpenedForWriting();
    if (recorder == nullptr)
        return false;
    recorder->checkpoint(tree->GetFile().GetStream());
    return true;
}

void Database::closeOrForget()
{
    if (tree != nullptr && tree->GetFile().GetIndex().IsForked())
        forgetTree();
    else
        Database::close();
}

void Database::abandon() noexcept
{
    if (tree != nullptr)
        forgetTree();
}

double Database::waitedSeconds() const
{
    return tree == nullptr ? waitedSeconds_ : tree->GetFile().GetIndex().GetWaitedSeconds();
}

void Database::forgetTree()
{
    tree->GetFile().CloseFile();
    writtenInVain_ = tree->GetFile().HasLostItsName();
    waitedSeconds_ = waitedSeconds();
    forgetDatasetPositions();
    recorder.reset();
    tree.reset();
    accessMode = 1;
    openedForWriting = false;
    openedForReading = false;
}

/// Positions in the file mean nothing once it is closed. Without somebody else who shares the tree
/// nobody can see them any more, so that there is nothing to forget.
void Database::forgetDatasetPositions()
{
    if (tree.use_count() == 1)
        return;
    for (Zyl2Mox::Tree::NodeType const& record : tree->GetRecords())
        if (auto* const geometry = dynamic_cast<Zyl2Mox::Geometry*>(record.value))
            geometry->ClearDatasets();
}

} // namespace Mox2
} // namespace Zyl2
