#ifndef ZYL2_MOX2_INTERRUPTEDRUN_H
#define ZYL2_MOX2_INTERRUPTEDRUN_H

#include <Zyl2/Export.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

/// A block of values of a run.
struct RunBlock
{
    RunBlock() : slot(0), position(0), size(0), content(0) {}

    /// In the index that the file is to have.
    std::uint64_t slot;
    /// Of its first byte in the model file; 0 while it is not there.
    std::uint64_t position;
    /// Bytes that it takes in the model file; 0 while it is not there.
    std::uint64_t size;
    /// Bytes of values that it holds.
    std::uint64_t content;
};

/// How far a run had come.
struct RunProgress
{
    RunProgress()
        : calls(0), callsUnderWay(0), datasets(0), lastStep(), datasetsOfLastStep(0), stepBefore(),
          isClosing(false), isGoingOn(false), isOverwritten(false), damage(), blocks()
    {}

    /// Calls that had ended, of those that change a model.
    std::uint64_t calls;
    /// Calls that had begun and not ended: none or one.
    std::uint64_t callsUnderWay;
    /// Arrays that were added.
    std::uint64_t datasets;
    /// Name of the step that the last array was added for; empty before the first one.
    std::string lastStep;
    /// Arrays that were added for it since the one before.
    std::uint64_t datasetsOfLastStep;
    /// Name of the step before that: the run had gone on from there. Empty for none.
    std::string stepBefore;
    /// Whether the run had called `close`.
    bool isClosing;
    /// Whether a process is still writing; only `progressOf` and `writeOutlineOf` tell.
    bool isGoingOn;
    /// Whether the model file that is there is of another run, one that was not recoverable; values
    /// that this run had saved went with its own. What `writeTo` returns does not tell.
    bool isOverwritten;
    /// What is wrong with the rest; empty when there is no such rest.
    std::string damage;
    /// In the order in which they lie in the file.
    std::vector<RunBlock> blocks;
};

/// A run that was recoverable (`SaverOptions::recoverable`), and did not come to its end.
///
/// \code
/// InterruptedRun run("beam.mox");
/// run.writeTo("recovered.mox");
/// \endcode
class ZYL2_EXPORT InterruptedRun
{
public:
    /// Whether there is one of that model file. It may still be going on.
    static bool isBeside(std::string const& path);

    /// Removes what a run or a recovery has left of itself that came to its end and was killed
    /// while it tidied up. Does nothing where there is a run that can be recovered.
    static void removeRemains(std::string const& path);

    /// How far a run has come that may still be going on, which it does not notice.
    /// \param path of the model file
    /// \throws Exception::Exception as the constructor does, but for a run that goes on
    static RunProgress progressOf(std::string const& path);

    /// Writes a file of the nodes and datasets that a run has added so far, without the values. It
    /// may still be going on, which it does not notice. Whoever reads that file finds everything
    /// in its place but blocks of values.
    /// \param path   of the model file
    /// \param output is overwritten
    /// \throws Exception::Exception as `progressOf` and `writeTo` do
    static RunProgress writeOutlineOf(std::string const& path, std::string const& output);

    /// Finds what a run has left, and keeps others from it as long as this object lives; where
    /// nothing may be written, it only looks whether others are at it.
    /// \param path of the model file
    /// \throws Exception::MiscelleneousException "Unable to open file ...": there is no such run;
    ///         "Unable to recover": it goes on, is of another version, or its log is none
    explicit InterruptedRun(std::string const& path);
    ~InterruptedRun();
    InterruptedRun(InterruptedRun const&) = delete;
    InterruptedRun& operator=(InterruptedRun const&) = delete;

    RunProgress const& progress() const;

    /// Where a file may be made that shall take the model file's place: it goes with the run.
    std::string temporaryPath() const;

    /// Writes a whole file of what was added, as `close` would have after the last call that had
    /// ended. What the run has left stays as it is.
    /// \param output is overwritten
    /// \return how far the file goes; its `damage` says what could not be had of the rest
    /// \throws Exception::MiscelleneousException "Unable to recover": the log tells of calls that
    ///         this library can't make
    /// \throws Exception::Exception as `Model` does
    RunProgress writeTo(std::string const& output);

    /// Notes that a whole file is about to take the model file's place.
    /// \throws Exception::FileWriteException that can't be noted
    void noteWhole();

    /// Removes what the run has left, but for the model file.
    void remove();

private:
    struct Content;
    Content* content_;
};

} // namespace Mox2
} // namespace Zyl2

#endif
