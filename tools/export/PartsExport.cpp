#include "PartsExport.h"

#include "AboutFile.h"
#include "ExportCount.h"
#include "OutputFiles.h"
#include "Stages.h"
#include "StepReader.h"
#include "XmlFiles.h"

#include "moxread/FormatError.h"
#include "moxread/PartitionIndex.h"
#include "moxread/PartitionTree.h"
#include "moxread/Text.h"

#include <filesystem>
#include <set>

namespace Export {

namespace fs = std::filesystem;

using MoxRead::PartitionFile;

namespace {

class PartsExporter
{
public:
    PartsExporter(std::string const& index, std::string const& output, ExportOptions const& options)
        : input_(index), output_(output), options_(options),
          index_(aboutFile(index, [&] { return MoxRead::PartitionIndex(index); }))
    {}

    ExportSummary run()
    {
        aboutFile(input_, [this] { findSteps(); });
        aboutFile(output_, [this] { writeAll(); });
        return count_.summary(warnings_);
    }

private:
    /// Steps and times are those of all files: each of them has to have the same.
    void findSteps()
    {
        index_.requireFiles();
        StepOrder order;
        for (PartitionFile const& part : index_.files())
            MoxRead::inContext([&] { return MoxRead::quoted(part.name); },
                               [&] {
                                   MoxRead::Model const model(part.path);
                                   MoxRead::requireOwn(index_, part, model.nodes());
                                   order.add(shapesOf(model));
                               });
        std::optional<std::string> warning;
        steps_ = order.steps(warning);
        if (options_.step)
            steps_ = {findStep(steps_, options_.step)};
        if (warning && said_.insert(*warning).second)
            warnings_.add(*warning);
        for (Step const& step : steps_)
            count_.addStep(step);
    }

    void writeAll()
    {
        OutputFiles files(output_, options_.overwrite);
        CollectionFile collection(files.file());
        Stages stages(options_.progress, index_.files().size());
        for (std::size_t part = 0; part < index_.files().size(); ++part) {
            writePart(files, part, collection);
            stages.finishOne();
        }
        collection.finish();
        count_.addFiles(files);
        files.publish();
    }

    void writePart(OutputFiles const& files, std::size_t part, CollectionFile& collection)
    {
        PartitionFile const& described = index_.files()[part];
        StepReader reader =
            aboutFile(described.path, [&] { return StepReader(described.path, options_.reading); });
        if (reader.shapes().empty()) {
            warnings_.add(MoxRead::quoted(described.name) + " has no shapes.");
            return;
        }
        aboutFile(described.path, [&] { reader.open(StepReader::Layout::Joined); });
        count_.addShapes(reader);
        fs::path const folder = numberedName("part_", part + 1, index_.files().size());
        fs::create_directory(files.folder() / folder);
        for (std::size_t step = 0; step < steps_.size(); ++step) {
            fs::path const name =
                folder / (numberedName("step_", step + 1, steps_.size()) + ".vtu");
            aboutFile(described.path, [&] { reader.show(steps_[step]); });
            count_.addFields(reader);
            writeGrid(*reader.grids().front()->get(), files.folder() / name);
            collection.add(steps_[step].time, part, files.folder().filename() / name);
        }
        takeWarnings(reader, described);
    }

    /// A warning that several files give in the same words is told once, of the first of them.
    void takeWarnings(StepReader& reader, PartitionFile const& part)
    {
        for (std::string const& sentence : reader.warnings().sentences())
            if (said_.insert(sentence).second)
                warnings_.add(MoxRead::quoted(part.name) + ": " + sentence);
    }

    std::string input_;
    std::string output_;
    ExportOptions const& options_;
    MoxRead::PartitionIndex index_;
    std::vector<Step> steps_;
    ExportCount count_;
    Warnings warnings_;
    std::set<std::string> said_;
};

} // namespace

ExportSummary exportParts(std::string const& index, std::string const& output,
                          ExportOptions const& options)
{
    return PartsExporter(index, output, options).run();
}

} // namespace Export
