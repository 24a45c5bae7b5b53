#ifndef ZYL2_WVF_WVFILE_H
#define ZYL2_WVF_WVFILE_H

#include "Zyl2/Wvf/BlockKeeper.h"
#include "Zyl2/Wvf/BlockTransformation.h"
#include "Zyl2/Wvf/Index.h"

#include <cstdio>
#include <memory>
#include <string>

namespace Zyl2Wvf {

/// The open container file: owns the stream and the index.
class WvFile
{
public:
    /// A file object without a file.
    WvFile();
    WvFile(WvFile const&) = delete;
    WvFile& operator=(WvFile const&) = delete;

    /// Closes the stream; a failure there ends the process.
    virtual ~WvFile() noexcept;

    /// Opens the file with `fopen`.
    /// \throws MiscelleneousException "File stream is already in use"; "Unable to open file ..."
    void OpenFile(std::string const& path, char const* mode);

    /// The same for wide names, of which the low 8 bits of each character are taken.
    void OpenFile(std::wstring const& path, wchar_t const* mode);

    /// Creates the file. The header has to be written next, before any other byte.
    /// \throws FileOpenException "File exists.": and `overwrite` is false
    /// \throws MiscelleneousException as `OpenFile`
    void OpenFileForWriting(std::string const& path, bool overwrite);
    void OpenFileForWriting(std::wstring const& path, bool overwrite);

    /// Writes signature and version to the start of the open file. A failure shows when the
    /// blocks are saved: the stream remembers it.
    void WriteHeader();

    /// Sets the bit of `type` on every block that the key has now.
    void AddBlockTransformation(std::string const& name, BlockTransformationType type);

    /// From now on what is put under the key is kept beside the file until it is saved.
    void KeepUnsaved(std::string const& key, std::unique_ptr<BlockKeeper> keeper);

    /// Ends the index's threads and closes the stream, if one is open. Saves nothing.
    virtual void CloseFile();

    /// Whether the system refused to close the last stream, so that bytes may be lost.
    bool HasFailedToClose() const { return hasFailedToClose_; }

    /// Whether the last file that was closed had lost its name by then, so that nobody can find it.
    bool HasLostItsName() const { return hasLostItsName_; }

    /// Null when no file is open.
    std::FILE* GetStream() const { return stream_; }
    Index& GetIndex() { return index_; }

private:
    std::FILE* stream_ = nullptr;
    bool hadName_ = false;
    bool hasFailedToClose_ = false;
    bool hasLostItsName_ = false;
    /// Blocks of the index are in its memory.
    std::unique_ptr<BlockKeeper> keeper_;
    Index index_;
};

} // namespace Zyl2Wvf

#endif
