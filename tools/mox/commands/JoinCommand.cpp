#include "JoinCommand.h"

#include "CommandLine.h"
#include "mox/join/ModelJoin.h"
#include "mox/print/FileError.h"
#include "mox/print/JsonWriter.h"

#include "common/PartialFile.h"
#include "common/Progress.h"
#include "moxread/FormatError.h"
#include "moxread/PartitionIndex.h"

#include <Zyl2/Exception/Exception.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

namespace Mox {

namespace {

constexpr char const* application = "mox join";

struct Result
{
    std::size_t shapes = 0;
    std::vector<std::string> warnings;
};

void refuseSameFile(JoinArguments const& options)
{
    std::error_code ignored;
    if (std::filesystem::equivalent(options.index, options.output, ignored))
        throw FileError(options.output + ": this is the index itself");
    MoxRead::PartitionIndex const index(options.index);
    for (MoxRead::PartitionFile const& file : index.files())
        if (std::filesystem::equivalent(file.path, options.output, ignored))
            throw FileError(options.output + ": this is one of the files to join");
}

void writeJoined(MoxRead::Model& from, std::filesystem::path const& path,
                 JoinArguments const& options, Result& result)
{
    Zyl2::Mox2::SaverOptions saver;
    saver.overwrite = true;
    saver.recoverable = 0;
    saver.text1 = application;
    saver.text2 = std::filesystem::path(options.index).filename().string();
    Join::Options how;
    how.tolerance = options.tolerance;
    how.warn = [&](std::string const& warning) { result.warnings.push_back(warning); };
    Common::Progress progress("join " + options.index);
    Zyl2::Mox2::Model to;
    to.saveTo(path.string(), saver);
    try {
        Join::ModelJoin join(from, to, how,
                             [&](std::size_t done, std::size_t all) { progress.show(done, all); });
        join.run();
        result.shapes = join.shapes();
    } catch (...) {
        to.abandon();
        throw;
    }
    inFile(options.output, [&] { to.close(); });
}

Result join(JoinArguments const& options)
{
    if (!MoxRead::PartitionIndex::isIndex(options.index))
        throw MoxRead::FormatError("this is no index of a partitioned model");
    refuseSameFile(options);
    MoxRead::Model from(options.index);
    Result result;
    result.warnings = from.remarks();
    std::unique_ptr<Common::PartialFile> file;
    inFile(options.output, [&] {
        file = std::make_unique<Common::PartialFile>(options.output, options.overwrite);
    });
    writeJoined(from, file->path(), options, result);
    inFile(options.output, [&] { file->publish(); });
    return result;
}

void printJson(std::ostream& out, Result const& result)
{
    JsonWriter json(out);
    json.beginObject().member("shapes", result.shapes).key("warnings").values(result.warnings);
    json.endObject();
}

std::string complaintAbout(std::string const& text)
{
    char* end = nullptr;
    double const value = std::strtod(text.c_str(), &end);
    bool const isBound =
        !text.empty() && end == text.c_str() + text.size() && std::isfinite(value) && value >= 0;
    return isBound ? "" : text + " is no number from 0 on";
}

} // namespace

void addJoinCommand(CommandLine& commandLine)
{
    auto const options = std::make_shared<JoinArguments>();
    SubCommand command = commandLine.addCommand(
        "join", "Make one model of those that the ranks of a program have written");
    command.add("INDEX", options->index, "Index of a partitioned model").required();
    command.add("OUT", options->output, "Model file to make").required();
    command
        .add("--tolerance", options->tolerance,
             "Difference up to which values that several ranks have are the same")
        .placeholder("T")
        .check(complaintAbout);
    command.addFlag("--overwrite", options->overwrite, "Replace OUT if it exists");
    command.addFlag("--json", options->json, "Say as JSON what was written");
    command.explain("Example:\n  mox join wave.moxs wave.mox");
    command.run([options] { return joinFiles(*options, std::cout, std::cerr); });
}

int joinFiles(JoinArguments const& options, std::ostream& out, std::ostream& err)
{
    return runOnFile(options.index, err, [&] {
        Result const result = join(options);
        for (std::string const& warning : result.warnings)
            err << application << ": warning: " << warning << '\n';
        if (options.json)
            printJson(out, result);
    });
}

} // namespace Mox
