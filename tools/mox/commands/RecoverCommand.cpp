#include "RecoverCommand.h"

#include "CommandLine.h"
#include "RecoverParts.h"
#include "mox/print/FileError.h"

#include "common/PartialFile.h"
#include "common/Progress.h"
#include "moxread/FormatError.h"
#include "moxread/PartitionIndex.h"
#include "moxread/Verify.h"

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/InterruptedRun.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

namespace Mox {

namespace {

using Zyl2::Mox2::InterruptedRun;
using Zyl2::Mox2::RunProgress;

struct Recovered
{
    RunProgress progress;
    MoxRead::Summary summary;
};

MoxRead::Summary verified(std::string const& what, std::string const& path)
{
    Common::Progress progress(what);
    return MoxRead::verify(
        path, [&](std::uint64_t done, std::uint64_t all) { progress.show(done, all); });
}

bool isWhole(std::string const& path)
{
    if (!std::filesystem::exists(path))
        return false;
    try {
        verified("verify " + path, path);
        return true;
    } catch (MoxRead::FormatError const&) {
        return false;
    }
}

[[noreturn]] void failBySystem(std::string const& what)
{
    throw std::runtime_error(what + ": " + std::strerror(errno) + ".");
}

/// What was recovered must be there when the rest of the run goes.
void putOnDisk(std::string const& path)
{
    int const file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        failBySystem("What was recovered cannot be written");
    bool const isDone = ::fsync(file) == 0;
    int const error = errno;
    ::close(file);
    errno = error;
    if (!isDone)
        failBySystem("What was recovered cannot be written");
}

/// What the library says of a failure, in one sentence.
std::string sentenceOf(std::exception const& failure)
{
    std::string const detail = Zyl2::Exception::detail(failure);
    return detail.empty() ? failure.what() : std::string(failure.what()) + ": " + detail;
}

Recovered write(InterruptedRun& run, std::string const& file, std::string const& output)
{
    Recovered recovered;
    recovered.progress = run.writeTo(output);
    recovered.summary = verified("recover " + file, output);
    return recovered;
}

std::string counted(std::uint64_t count, std::string const& thing)
{
    return std::to_string(count) + ' ' + thing + (count == 1 ? "" : "s");
}

/// How far the steps are there: nobody knows whether the last one has all that it was to have.
std::string extentOf(RunProgress const& progress)
{
    std::string const ofLast =
        counted(progress.datasetsOfLastStep, "array") + " of step \"" + progress.lastStep + '"';
    if (progress.lastStep.empty())
        return "no steps";
    return progress.stepBefore.empty()
               ? ofLast
               : "complete up to step \"" + progress.stepBefore + "\", and " + ofLast;
}

void tell(std::ostream& out, std::string const& file, Recovered const& recovered)
{
    RunProgress const& progress = recovered.progress;
    out << file << ": recovered: " << extentOf(progress) << "; "
        << counted(recovered.summary.datasets, "dataset") << " in all";
    if (progress.callsUnderWay != 0)
        out << "; " << progress.callsUnderWay << " call was under way";
    if (!progress.damage.empty())
        out << "; the rest is lost: " << progress.damage;
    out << '\n';
}

void refuseTheFileItself(RecoverArguments const& arguments)
{
    std::error_code ignored;
    if (std::filesystem::equivalent(arguments.file, arguments.output, ignored))
        throw std::runtime_error("This is what -o OUT is to leave as it is; without, the file is "
                                 "recovered in its place.");
}

void recoverTo(InterruptedRun& run, RecoverArguments const& arguments, std::ostream& out)
{
    refuseTheFileItself(arguments);
    Common::PartialFile file(arguments.output, arguments.overwrite);
    Recovered const recovered = write(run, arguments.file, file.path());
    file.publish();
    tell(out, arguments.output, recovered);
}

/// \return whether there is nothing to do
bool isOver(InterruptedRun& run, std::string const& file)
{
    if (!isWhole(file))
        return false;
    RunProgress const& progress = run.progress();
    if (!progress.isClosing && progress.calls != 0)
        throw std::runtime_error("The file is whole, and what is in " + file +
                                 ".recovery is of another run: recover that with -o OUT, or "
                                 "remove it.");
    run.remove();
    return true;
}

/// The file keeps its rights.
void replace(std::string const& file, std::string const& made)
{
    std::error_code ignored;
    std::filesystem::path target = std::filesystem::canonical(file, ignored);
    if (ignored)
        target = file;
    else
        std::filesystem::permissions(made, std::filesystem::status(target).permissions(), ignored);
    if (::rename(made.c_str(), target.c_str()) != 0)
        failBySystem("What was recovered cannot take the file's place");
    putOnDisk(target.has_parent_path() ? target.parent_path() : ".");
}

/// A file of another run is not replaced, not even an incomplete one: its run may still go on.
void refuseTheFileOfAnother(InterruptedRun const& run, std::string const& file)
{
    if (run.progress().isOverwritten)
        throw std::runtime_error("The file is of another run than what is in " + file +
                                 ".recovery: recover that with -o OUT, or remove it.");
}

void recoverInPlace(InterruptedRun& run, std::string const& file, std::ostream& out)
{
    refuseTheFileOfAnother(run, file);
    std::string const made = run.temporaryPath();
    Recovered const recovered = write(run, file, made);
    if (!recovered.progress.damage.empty()) {
        ::unlink(made.c_str());
        throw std::runtime_error(
            recovered.progress.damage + "; mox recover -o OUT makes a file of " +
            counted(recovered.progress.calls, "call") + " before, and leaves all as it is.");
    }
    putOnDisk(made);
    run.noteWhole();
    replace(file, made);
    run.remove();
    tell(out, file, recovered);
}

void recover(RecoverArguments const& arguments, std::ostream& out)
{
    std::string const& file = arguments.file;
    if (!InterruptedRun::isBeside(file)) {
        if (!isWhole(file))
            throw std::runtime_error("There is nothing to recover from: the run was not "
                                     "recoverable, or another one has overwritten it.");
        InterruptedRun::removeRemains(file);
        out << file << ": whole; there is nothing to recover\n";
        return;
    }
    InterruptedRun run(file);
    if (!arguments.output.empty())
        recoverTo(run, arguments, out);
    else if (isOver(run, file))
        out << file << ": whole; there is nothing to recover\n";
    else
        recoverInPlace(run, file, out);
}

} // namespace

void addRecoverCommand(CommandLine& commandLine)
{
    auto const arguments = std::make_shared<RecoverArguments>();
    SubCommand command = commandLine.addCommand(
        "recover", "Make a whole file of what a run has left that was killed or ran out of disk");
    command
        .add("FILE", arguments->file,
             "Model file of a run that was recoverable, or index of a partitioned model")
        .required();
    Argument const output =
        command.add("-o,--output", arguments->output, "File to write to; all stays as it is")
            .placeholder("OUT");
    command.addFlag("--overwrite", arguments->overwrite, "Replace OUT if it exists").needs(output);
    command.explain(
        "The run must have been recoverable: MOXWRITER_RECOVERABLE=1, or the host's own "
        "option.\n\nExample:\n  mox recover beam.mox");
    command.run([arguments] { return recoverFile(*arguments, std::cout, std::cerr); });
}

std::string stateOfRun(RunProgress const& progress, std::string const& file)
{
    std::string const extent =
        " (" + extentOf(progress) + ')' +
        (progress.damage.empty() ? "" : "; the rest is lost: " + progress.damage);
    std::string const from = progress.damage.empty() ? "" : " -o OUT";
    return progress.isGoingOn
               ? "the run goes on" + extent
               : "the run can be recovered" + extent + ": mox recover " + file + from;
}

std::string adviceOnRun(std::string const& file)
{
    try {
        if (!InterruptedRun::isBeside(file))
            return {};
        RunProgress const progress = InterruptedRun::progressOf(file);
        return progress.isOverwritten ? "what is in " + file + ".recovery is of another run"
                                      : stateOfRun(progress, file);
    } catch (Zyl2::Exception::Exception const& failure) {
        return "what the run has left beside it can't be read: " + sentenceOf(failure);
    }
}

int recoverFile(RecoverArguments const& arguments, std::ostream& out, std::ostream& err)
{
    if (MoxRead::PartitionIndex::isIndex(arguments.file))
        return recoverParts(arguments, out, err);
    return runOnFile(arguments.file, err, [&] {
        try {
            recover(arguments, out);
        } catch (Zyl2::Exception::Exception const& failure) {
            throw std::runtime_error(sentenceOf(failure));
        }
    });
}

} // namespace Mox
