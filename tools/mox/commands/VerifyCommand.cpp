#include "VerifyCommand.h"

#include "CommandLine.h"
#include "mox/print/FileError.h"
#include "mox/print/JsonWriter.h"

#include "common/Progress.h"
#include "moxread/PartitionIndex.h"
#include "moxread/Verify.h"

#include <algorithm>
#include <functional>
#include <iostream>
#include <memory>

namespace Mox {

namespace {

struct Verdict
{
    std::string file;
    MoxRead::Summary summary;
    /// Empty for a sound file; begins with the file's name.
    std::string error;

    bool isGood() const { return error.empty(); }
};

Verdict verdictOn(std::string const& path, MoxRead::ReadOptions const& reading)
{
    Verdict verdict;
    verdict.file = path;
    Common::Progress progress("verify " + path);
    try {
        inFile(path, [&] {
            verdict.summary = MoxRead::verify(
                path, [&](std::uint64_t done, std::uint64_t all) { progress.show(done, all); },
                reading);
        });
    } catch (FileError const& error) {
        verdict.error = error.what();
    }
    return verdict;
}

void print(std::ostream& out, Verdict const& verdict)
{
    MoxRead::Summary const& summary = verdict.summary;
    out << verdict.file << ": ok (" << summary.blocks << " blocks, " << summary.nodes << " nodes, "
        << summary.datasets << " datasets, " << summary.bytes << " bytes)\n";
}

void write(JsonWriter& json, Verdict const& verdict)
{
    json.beginObject(JsonWriter::OneLine)
        .member("file", verdict.file)
        .member("ok", verdict.isGood());
    if (verdict.isGood()) {
        json.member("blockCount", verdict.summary.blocks);
        json.member("nodeCount", verdict.summary.nodes);
        json.member("datasetCount", verdict.summary.datasets);
        json.member("bytes", verdict.summary.bytes);
    } else {
        json.member("error", verdict.error);
    }
    json.endObject();
}

/// Takes the verdicts one by one, as they are reached.
class VerdictText
{
public:
    VerdictText(std::ostream& out, std::ostream& err) : out_(out), err_(err) {}

    void add(Verdict const& verdict)
    {
        ++count_;
        bad_ += verdict.isGood() ? 0 : 1;
        if (verdict.isGood())
            print(out_, verdict);
        else
            err_ << verdict.error << '\n';
    }

    void finish()
    {
        if (count_ > 1)
            out_ << count_ << " files, " << bad_ << " bad\n";
    }

private:
    std::ostream& out_;
    std::ostream& err_;
    std::size_t count_ = 0;
    std::size_t bad_ = 0;
};

class VerdictJson
{
public:
    VerdictJson(std::ostream& out, std::ostream& err) : json_(out), err_(err)
    {
        json_.beginObject().key("files").beginArray();
    }

    void add(Verdict const& verdict)
    {
        ++count_;
        write(json_, verdict);
        if (verdict.isGood())
            return;
        ++bad_;
        err_ << verdict.error << '\n';
    }

    void finish()
    {
        json_.endArray().member("fileCount", count_).member("badCount", bad_).endObject();
    }

private:
    JsonWriter json_;
    std::ostream& err_;
    std::size_t count_ = 0;
    std::size_t bad_ = 0;
};

Verdict verdictOn(MoxRead::PartitionIndex const& index, MoxRead::PartitionFile const& part,
                  std::string const& path, MoxRead::ReadOptions const& reading)
{
    std::string const complaint = index.complaintAbout(part);
    if (complaint.empty())
        return verdictOn(part.path, reading);
    Verdict verdict;
    verdict.file = part.path;
    verdict.error = path + ": " + complaint;
    return verdict;
}

using TakeVerdict = std::function<void(Verdict const&)>;

void verifyParts(std::string const& path, MoxRead::ReadOptions const& reading,
                 TakeVerdict const& take)
{
    Verdict failed;
    failed.file = path;
    try {
        inFile(path, [&] {
            MoxRead::PartitionIndex const index(path);
            for (MoxRead::PartitionFile const& part : index.files())
                take(verdictOn(index, part, path, reading));
        });
        return;
    } catch (FileError const& error) {
        failed.error = error.what();
    }
    take(failed);
}

template <typename Report>
int verifyAll(VerifyArguments const& options, Report report)
{
    bool areGood = true;
    auto const take = [&](Verdict const& verdict) {
        report.add(verdict);
        areGood = areGood && verdict.isGood();
    };
    for (std::string const& file : options.files) {
        if (options.parts && MoxRead::PartitionIndex::isIndex(file))
            verifyParts(file, options.reading, take);
        else
            take(verdictOn(file, options.reading));
    }
    report.finish();
    return areGood ? 0 : 1;
}

} // namespace

void addVerifyCommand(CommandLine& commandLine)
{
    auto const options = std::make_shared<VerifyArguments>();
    SubCommand command =
        commandLine.addCommand("verify", "Check every byte of a model file's layout");
    command.add("FILE", options->files, "Model files, or indices of partitioned models").required();
    command.addFlag("--parts", options->parts, "Tell the files of an index apart");
    command.addFlag("--json", options->json, "Print JSON");
    command.addThreads(options->reading.threads);
    command.explain("It tells of bytes. mox check tells whether what they say means something."
                    "\n\nExample:\n  mox verify beam.mox frame.mox");
    command.run([options] { return verifyFiles(*options, std::cout, std::cerr); });
}

int verifyFiles(VerifyArguments const& options, std::ostream& out, std::ostream& err)
{
    return options.json ? verifyAll(options, VerdictJson(out, err))
                        : verifyAll(options, VerdictText(out, err));
}

int verifyFile(std::string const& path, std::ostream& out, std::ostream& err)
{
    VerifyArguments options;
    options.files = {path};
    return verifyFiles(options, out, err);
}

} // namespace Mox
