#include "TranslateCommand.h"

#include "CommandLine.h"
#include "mox/formats/ChildProcess.h"
#include "mox/formats/Formats.h"
#include "mox/formats/Libraries.h"

#include <common/EndingSignals.h>
#include <common/Progress.h>
#include <common/SignalsHeld.h>
#include <common/TemporaryPath.h>
#include <exchange/Error.h>

#include <nlohmann/json.hpp>

#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

namespace Mox {

namespace {

constexpr char const* application = "mox translate";
constexpr int success = 0;
constexpr int failure = 1;

Exchange::Error errorAbout(std::string const& file, std::string const& sentence)
{
    return Exchange::Error(file + ": " + sentence);
}

Format const& formatOfInput(std::string const& input)
{
    if (!std::filesystem::exists(input))
        throw errorAbout(input, "There is no such file.");
    Format const* const format = formatOf(FileProbe(input));
    if (format == nullptr)
        throw errorAbout(input, "The file is of no format that can be translated.");
    return *format;
}

Exchange::Summary translateWith(Format const& format, TranslateArguments const& arguments,
                                Exchange::Report& report)
{
    if (!format.open)
        throw errorAbout(arguments.input,
                         "This is a file of the format " + format.name +
                             ", and this mox was built without it: " + format.package +
                             " has to be there when it is built.");
    Common::Progress progress("translate " + arguments.input);
    Exchange::TranslationOptions options;
    options.overwrite = arguments.overwrite;
    options.partial = arguments.partial;
    options.application = application;
    options.progress = [&progress](std::uint64_t done, std::uint64_t all) {
        progress.show(done, all);
    };
    return Exchange::translate(arguments.input, format.open, arguments.output, options, report);
}

void printSummary(Format const& format, Exchange::Summary const& summary,
                  Exchange::Report const& report, std::ostream& out)
{
    nlohmann::ordered_json json = {{"format", format.name},
                                   {"nodes", summary.nodes},
                                   {"elements", summary.elements},
                                   {"steps", summary.steps},
                                   {"fields", summary.fields},
                                   {"warnings", report.warnings()},
                                   {"largestRelativeError", report.largestError()}};
    constexpr int indent = 2;
    // Names in warnings are those of the file, whatever bytes they have.
    out << json.dump(indent, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

void run(TranslateArguments const& arguments, std::ostream& out, std::ostream& err)
{
    Format const& format = formatOfInput(arguments.input);
    Exchange::Report report;
    report.skipUnknown = arguments.skipUnknown;
    Exchange::Summary const summary = translateWith(format, arguments, report);
    for (std::string const& warning : report.warnings())
        err << application << ": warning: " << warning << '\n';
    if (arguments.json)
        printSummary(format, summary, report, out);
}

/// Some of the libraries end the process themselves, without a word.
bool isOurs(int status)
{
    return status == success || status == failure;
}

/// Whether the child was ended by a signal that was meant for the command as a whole.
bool wasAskedToEnd(ChildResult const& child)
{
    sigset_t const endings = Common::endingSignals();
    return child.signal != 0 && ::sigismember(&endings, child.signal) == 1;
}

/// Readers of other formats may crash when a file is damaged: their crash is told in a sentence.
int translateInChild(TranslateArguments const& arguments)
{
    ChildResult const child =
        runInChild([&] { return translateFile(arguments, std::cout, std::cerr); });
    if (child.status && isOurs(*child.status))
        return *child.status;
    Common::TemporaryPath::removeLeftBy(child.id, arguments.output);
    Common::Progress::wipeLeftOver();
    if (wasAskedToEnd(child))
        Common::endBy(child.signal);
    std::cerr << application << ": " << arguments.input
              << ": The file is damaged in a way that the library reading it does not survive.\n";
    return failure;
}

int translateWithLibrary(TranslateArguments const& arguments, Format const& format)
{
    return format.open ? translateInChild(arguments)
                       : translateFile(arguments, std::cout, std::cerr);
}

int translateWhereItCanBeRead(TranslateArguments const& arguments)
{
    Format const* const format = formatOf(FileProbe(arguments.input));
    if (format == nullptr || format->library == Library::None)
        return translateFile(arguments, std::cout, std::cerr);
    return runWithLibrary(format->library, application,
                          [&] { return translateWithLibrary(arguments, *format); });
}

} // namespace

void addTranslateCommand(CommandLine& commandLine)
{
    auto const arguments = std::make_shared<TranslateArguments>();
    SubCommand command = commandLine.addCommand(
        "translate", "Make a model file of a result file: .frd, EnSight, VTK, CGNS, OpenFOAM, "
                     "Exodus or Gmsh, as its content says");
    command.add("IN", arguments->input, "Result file or case folder").required();
    command.add("OUT", arguments->output, "Model file to be made").required();
    command.addFlag("--overwrite", arguments->overwrite, "Replace OUT if it exists");
    command.addFlag("--skip-unknown", arguments->skipUnknown,
                    "Leave elements out that a model can't hold, such as polyhedra");
    command.addFlag("--partial", arguments->partial,
                    "Keep the whole steps of a file that ends too early (.frd)");
    command.addFlag("--json", arguments->json, "Print what was written as JSON");
    command.explain("Example:\n  mox translate result.pvd result.mox");
    command.run([arguments] { return translateWhereItCanBeRead(*arguments); });
}

int translateFile(TranslateArguments const& arguments, std::ostream& out, std::ostream& err)
{
    try {
        run(arguments, out, err);
        return success;
    } catch (std::exception const& error) {
        err << application << ": " << error.what() << '\n';
        return failure;
    }
}

} // namespace Mox
