#include "Inputs.h"

#include "AllocationMeter.h"
#include "FileParts.h"
#include "MemoryFile.h"
#include "Violation.h"

#include "mox/commands/DiffCommand.h"
#include "mox/commands/DumpCommand.h"
#include "mox/commands/InfoCommand.h"
#include "mox/commands/LsCommand.h"
#include "mox/commands/VerifyCommand.h"

#include "moxread/FormatError.h"
#include "moxread/Model.h"

#include <algorithm>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace Fuzz {

namespace {

using Mox::DiffArguments;
using Mox::diffFiles;
using Mox::DumpArguments;
using Mox::dumpDataset;
using Mox::InfoArguments;
using Mox::listFile;
using Mox::showInfo;
using Mox::verifyFile;

struct Outcome
{
    int status = 0;
    std::string out;
    std::string err;
};

using Command = std::function<int(std::string const&, std::ostream&, std::ostream&)>;

Outcome outcomeOf(Command const& command, std::string const& path)
{
    std::ostringstream out;
    std::ostringstream err;
    int const status = command(path, out, err);
    return {status, out.str(), err.str()};
}

Outcome outcomeWithin(std::size_t bound, Command const& command, std::string const& path)
{
    AllocationMeter const meter;
    Outcome outcome = outcomeOf(command, path);
    require(meter.peak() <= bound, "more memory was used than the file accounts for");
    return outcome;
}

void requireVerdict(Outcome const& outcome)
{
    if (outcome.status == 0) {
        require(!outcome.out.empty(), "a sound file got no answer");
        require(outcome.err.empty(), "a sound file got a complaint");
        return;
    }
    require(outcome.status == 1, "the exit status is neither 0 nor 1");
    require(outcome.out.empty(), "a bad file got an answer");
    require(std::count(outcome.err.begin(), outcome.err.end(), '\n') == 1 &&
                outcome.err.back() == '\n',
            "a complaint is not one line");
}

int verify(std::string const& path, std::ostream& out, std::ostream& err)
{
    return verifyFile(path, out, err);
}

int list(std::string const& path, std::ostream& out, std::ostream& err)
{
    return listFile(path, out, err);
}

int showBlocks(std::string const& path, std::ostream& out, std::ostream& err)
{
    InfoArguments options;
    options.file = path;
    return showInfo(options, out, err);
}

int compareWithItself(std::string const& path, std::ostream& out, std::ostream& err)
{
    DiffArguments options;
    options.left = path;
    options.right = path;
    int const status = diffFiles(options, out, err);
    // `mox diff` prints nothing about equal files, whereas a command that succeeds has to print
    // here.
    if (status == 0)
        out << "equal";
    return status;
}

/// Reads all values and tells, instead of them, of a number that they make.
Command readingOf(MoxRead::ReadOptions const& options)
{
    return [=](std::string const& path, std::ostream& out, std::ostream& err) {
        std::uint64_t sum = 0;
        auto const add = [&](MoxRead::Model::Variables const&, MoxRead::Dataset const& dataset) {
            for (std::uint32_t const word : dataset.words)
                sum = sum * 31 + word;
        };
        try {
            MoxRead::Model(path, options).readAll(add);
        } catch (MoxRead::FormatError const& error) {
            err << error.what() << '\n';
            return 1;
        }
        out << sum;
        return 0;
    };
}

std::vector<MoxRead::ReadOptions> otherWaysToRead()
{
    std::vector<MoxRead::ReadOptions> ways;
    for (MoxRead::Inflater const inflater : MoxRead::builtInflaters()) {
        ways.emplace_back();
        ways.back().inflater = inflater;
    }
    ways.emplace_back();
    ways.back().threads = 2;
    return ways;
}

void readInAllWays(std::string const& path, std::size_t bound, bool isSound)
{
    Outcome const usual = outcomeWithin(bound, readingOf(MoxRead::ReadOptions()), path);
    requireVerdict(usual);
    require(!isSound || usual.status == 0, "the values of a sound file can't be read");
    for (MoxRead::ReadOptions const& options : otherWaysToRead()) {
        Outcome const outcome = outcomeWithin(bound, readingOf(options), path);
        requireVerdict(outcome);
        require(outcome.status != 0 || usual.status != 0 || outcome.out == usual.out,
                "values depend on how they are read");
        require(!isSound || outcome.status == 0, "a sound file is refused by an inflater");
    }
}

std::size_t memoryBound(std::uint8_t const* bytes, std::size_t size)
{
    auto const file = FileParts::of(std::string(bytes, bytes + size));
    std::size_t const inflated = file ? inflatedSizeOf(*file) : 0;
    constexpr std::size_t fixedMemory = std::size_t{4} << 20U;
    constexpr std::size_t memoryPerByte = 32;
    return fixedMemory + memoryPerByte * (size + inflated);
}

Command dumpOf(MoxRead::Node const& node, MoxRead::Variable const& variable)
{
    return [&](std::string const& path, std::ostream& out, std::ostream& err) {
        DumpArguments options;
        options.file = path;
        options.node = "#" + std::to_string(node.id);
        options.dataset = variable.datasetName();
        if (variable.hasStep())
            options.step = variable.stepName();
        return dumpDataset(options, out, err);
    };
}

/// Dumps the first datasets. More of them would take time and run the same code.
void dumpSomeDatasets(std::string const& path, std::size_t bound)
{
    constexpr std::size_t enough = 8;
    MoxRead::Model const model(path);
    std::size_t done = 0;
    for (MoxRead::Node const& node : model.nodes()) {
        if (node.geometry() == nullptr)
            continue;
        for (MoxRead::Variable const& variable : node.geometry()->variables) {
            if (++done > enough)
                return;
            Outcome const outcome = outcomeWithin(bound, dumpOf(node, variable), path);
            require(outcome.status == 0 && outcome.err.empty(),
                    "a dataset of a sound file could not be written out");
        }
    }
}

} // namespace

void readModelFile(std::uint8_t const* bytes, std::size_t size)
{
    MemoryFile const file(bytes, size);
    std::size_t const bound = memoryBound(bytes, size);
    Outcome const verified = outcomeWithin(bound, verify, file.path());
    requireVerdict(verified);
    bool const isSound = verified.status == 0;
    for (Command const& command :
         {Command(list), Command(showBlocks), Command(compareWithItself)}) {
        Outcome const outcome = outcomeWithin(bound, command, file.path());
        requireVerdict(outcome);
        require(!isSound || outcome.status == 0, "a sound file was refused by another command");
    }
    readInAllWays(file.path(), bound, isSound);
    if (isSound)
        dumpSomeDatasets(file.path(), bound);
}

} // namespace Fuzz
