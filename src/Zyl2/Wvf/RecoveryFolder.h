#ifndef ZYL2_WVF_RECOVERYFOLDER_H
#define ZYL2_WVF_RECOVERYFOLDER_H

#include <string>

namespace Zyl2Wvf {

/// The folder beside a model file that holds what the file alone does not have while it is being
/// written. Held open: it is found again when the process changes its working directory.
class RecoveryFolder
{
public:
    static constexpr char const* LogName = "log";
    /// Name of the file that a recovery writes, until it takes the place of the model file.
    static constexpr char const* ResultName = "recovered";

    /// Where the folder of a model file is, whether it exists or not.
    static std::string PathFor(std::string const& modelFile);

    /// Whether a model file has one, so that it may be recovered.
    static bool IsBeside(std::string const& modelFile);

    /// Makes the folder of a model file. What an earlier run left there is removed, if that is
    /// wanted.
    /// \throws FileOpenException "File exists.": an earlier run left something, and it is to stay,
    ///         or the run goes on
    /// \throws MiscelleneousException "Unable to open file ...": the system refuses
    static RecoveryFolder Make(std::string const& modelFile, bool overwrite);

    /// Opens the folder of a model file.
    /// \throws MiscelleneousException "Unable to open file ...": there is none, or the system
    ///         refuses
    static RecoveryFolder Open(std::string const& modelFile);

    RecoveryFolder(RecoveryFolder const&) = delete;
    RecoveryFolder& operator=(RecoveryFolder const&) = delete;
    ~RecoveryFolder();

    /// Makes a file that nobody has yet.
    /// \return its descriptor, open for reading and writing; -1 and `errno`
    int MakeFile(std::string const& name) const noexcept;

    /// \param flags of `open`
    /// \return its descriptor; -1 and `errno`
    int OpenFile(std::string const& name, int flags) const noexcept;

    void RemoveFile(std::string const& name) const noexcept;

    /// Removes the folder with all that a run and its recovery put there, the log first. Somebody
    /// else's files stay, and the folder with them.
    void Remove() const noexcept;

    /// Waits until the names in the folder, and its own, are on the disk.
    /// \return 0, or the number of the system's error
    int Synchronise() const noexcept;

    std::string const& GetPath() const { return path_; }

private:
    RecoveryFolder(std::string path, int descriptor);

    static void RefuseUnless(bool overwrite, std::string const& modelFile);

    std::string path_;
    int descriptor_;
};

} // namespace Zyl2Wvf

#endif
