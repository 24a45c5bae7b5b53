// The index of files that were recovered:
//
//   {
//     "format": "moxwriter partitioned model",
//     "version": 1,
//     "complete": true,
//     "ranks": 4,
//     "files": [
//       {"name": "wave.0.mox", "ranks": [[0, 1]], "size": 5120, "rootIndex": "1c291ca3"},
//       {"name": "wave.1.mox", "ranks": [[2, 3]], "size": 5098, "rootIndex": "90af02b7"}
//     ]
//   }

#include "RecoverParts.h"

#include "mox/print/FileError.h"
#include "mox/print/JsonWriter.h"

#include "common/PartialFile.h"
#include "moxread/FormatError.h"
#include "moxread/Model.h"
#include "moxread/PartitionIndex.h"
#include "moxread/PartitionTree.h"
#include "moxread/Text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace Mox {

using MoxRead::PartitionFile;
using MoxRead::PartitionIndex;
using MoxRead::quoted;

namespace {

constexpr auto oneLine = JsonWriter::Layout::OneLine;

/// How many steps the files of an index have.
struct StepCounts
{
    std::size_t least = std::numeric_limits<std::size_t>::max();
    std::size_t greatest = 0;

    void add(MoxRead::Model const& model)
    {
        std::set<std::string> steps;
        for (MoxRead::Node const& node : model.nodes())
            if (node.geometry() != nullptr)
                for (MoxRead::Variable const& variable : node.geometry()->variables)
                    if (variable.hasStep())
                        steps.insert(variable.stepName());
        least = std::min(least, steps.size());
        greatest = std::max(greatest, steps.size());
    }
};

std::string inDigits(std::uint32_t checksum)
{
    std::array<char, 9> text{};
    (void)std::snprintf(text.data(), text.size(), "%08x", checksum);
    return text.data();
}

void writeFile(JsonWriter& json, PartitionFile const& file)
{
    json.beginObject(oneLine).member("name", file.name).key("ranks").beginArray(oneLine);
    for (auto const& [first, last] : file.ranks)
        json.beginArray(oneLine).value(first).value(last).endArray();
    json.endArray().member("size", file.size).member("rootIndex", inDigits(file.rootIndex));
    json.endObject();
}

void writeText(std::string const& path, PartitionIndex const& index)
{
    std::ofstream stream(path, std::ios::binary);
    JsonWriter json(stream);
    json.beginObject().member("format", "moxwriter partitioned model").member("version", 1);
    json.member("complete", true).member("ranks", index.ranks()).key("files").beginArray();
    for (PartitionFile const& file : index.files())
        writeFile(json, PartitionIndex::asFound(file));
    json.endArray().endObject();
    stream.close();
    if (!stream)
        throw std::runtime_error("The index cannot be written.");
}

/// The old index, of which the same can be recovered once more, goes only for one that is there.
void putIndexOnDisk(std::string const& path)
{
    int const file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    bool const isDone = file >= 0 && ::fsync(file) == 0;
    if (file >= 0)
        ::close(file);
    if (!isDone)
        throw std::runtime_error("The index cannot be written.");
}

StepCounts countSteps(PartitionIndex const& index)
{
    StepCounts counts;
    for (PartitionFile const& file : index.files())
        MoxRead::inContext([&] { return quoted(file.name); },
                           [&] {
                               MoxRead::Model const model(file.path);
                               requireOwn(index, file, model.nodes());
                               counts.add(model);
                           });
    return counts;
}

void finish(PartitionIndex const& index, std::string const& path, std::ostream& out)
{
    StepCounts const steps = countSteps(index);
    Common::PartialFile file(path, true);
    writeText(file.path().string(), index);
    putIndexOnDisk(file.path().string());
    file.publish();
    out << path << ": finished: all files are whole";
    if (steps.least != steps.greatest)
        out << "; they have " << steps.least << " to " << steps.greatest
            << " steps: the last ones are not there of all ranks";
    out << '\n';
}

/// A file that a finished index tells otherwise of is none that its run has left.
int complain(PartitionIndex const& index, std::string const& path, std::ostream& out,
             std::ostream& err)
{
    int status = 0;
    for (PartitionFile const& file : index.files()) {
        std::string const complaint = index.complaintAbout(file);
        if (complaint.empty())
            continue;
        err << path << ": " << complaint << '\n';
        status = 1;
    }
    if (status == 0)
        out << path << ": whole; there is nothing to recover\n";
    return status;
}

int recoverEach(PartitionIndex const& index, std::string const& path, std::ostream& out,
                std::ostream& err)
{
    int worst = 0;
    for (PartitionFile const& file : index.files()) {
        RecoverArguments own;
        own.file = file.path;
        bool const isModel = !PartitionIndex::isIndex(file.path);
        if (!isModel)
            err << path << ": " << index.complaintAbout(file) << '\n';
        worst = std::max(worst, isModel ? recoverFile(own, out, err) : 1);
    }
    return worst;
}

} // namespace

int recoverParts(RecoverArguments const& arguments, std::ostream& out, std::ostream& err)
{
    int worst = 0;
    int const status = runOnFile(arguments.file, err, [&] {
        if (!arguments.output.empty())
            throw std::runtime_error("The files of an index are recovered in their places: -o is "
                                     "for one of them.");
        PartitionIndex const index(arguments.file);
        worst = index.isComplete() ? complain(index, arguments.file, out, err)
                                   : recoverEach(index, arguments.file, out, err);
        if (worst == 0 && !index.isComplete())
            finish(index, arguments.file, out);
    });
    return std::max(status, worst);
}

} // namespace Mox
