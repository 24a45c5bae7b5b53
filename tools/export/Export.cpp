#include "Export.h"

#include "AboutFile.h"
#include "BlockFiles.h"
#include "ExportCount.h"
#include "OutputFiles.h"
#include "PartsExport.h"
#include "Stages.h"
#include "StepReader.h"
#include "XmlFiles.h"
#include "common/PartialFile.h"
#include "moxread/PartitionIndex.h"

#include <filesystem>
#include <optional>

namespace Export {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t stagesOfMesh = 1;
/// Each step is read, then written.
constexpr std::size_t stagesOfStep = 2;

/// Writes one model; the ending of the output's name tells how.
class Exporter
{
public:
    Exporter(std::string const& input, std::string const& output, ExportOptions const& options);

    ExportSummary run();

private:
    bool isCollection() const;
    StepReader::Layout layout() const;
    std::vector<Step> chosenSteps() const;
    void exportGrid(Step const& step);
    void exportWithFolder(std::vector<Step> const& steps);
    void writeAll(OutputFiles const& files, std::vector<Step> const& steps);
    fs::path writeEntry(OutputFiles const& files, std::string const& name, Step const& step);
    void open();
    void show(Step const& step);
    void write(fs::path const& file);

    std::string input_;
    std::string output_;
    ExportOptions const& options_;
    StepReader reader_;
    ExportCount count_;
    std::optional<Stages> stages_;
};

Exporter::Exporter(std::string const& input, std::string const& output,
                   ExportOptions const& options)
    : input_(input), output_(output), options_(options),
      reader_(aboutFile(input, [&] { return StepReader(input, options.reading); }))
{}

ExportSummary Exporter::run()
{
    std::vector<Step> const steps = aboutFile(input_, [this] { return chosenSteps(); });
    stages_.emplace(options_.progress, stagesOfMesh + stagesOfStep * steps.size());
    aboutFile(output_, [&] {
        if (!isCollection() && layout() == StepReader::Layout::Joined)
            exportGrid(steps.front());
        else
            exportWithFolder(steps);
    });
    return count_.summary(reader_.warnings());
}

bool Exporter::isCollection() const
{
    return fs::path(output_).extension() == ".pvd";
}

StepReader::Layout Exporter::layout() const
{
    bool const isApart =
        isCollection() ? reader_.shapes().size() > 1 : fs::path(output_).extension() == ".vtm";
    return isApart ? StepReader::Layout::Apart : StepReader::Layout::Joined;
}

std::vector<Step> Exporter::chosenSteps() const
{
    if (isCollection() && !options_.step)
        return reader_.steps();
    return {reader_.step(options_.step)};
}

void Exporter::exportGrid(Step const& step)
{
    Common::PartialFile file(output_, options_.overwrite);
    open();
    show(step);
    write(file.path());
    count_.addFile(file.path());
    file.publish();
}

void Exporter::exportWithFolder(std::vector<Step> const& steps)
{
    OutputFiles files(output_, options_.overwrite);
    open();
    if (isCollection()) {
        writeAll(files, steps);
    } else {
        show(steps.front());
        write(files.file());
    }
    count_.addFiles(files);
    files.publish();
}

void Exporter::writeAll(OutputFiles const& files, std::vector<Step> const& steps)
{
    CollectionFile collection(files.file());
    std::size_t number = 0;
    for (Step const& step : steps)
        collection.add(step.time, 0,
                       writeEntry(files, numberedName("step_", ++number, steps.size()), step));
    collection.finish();
}

fs::path Exporter::writeEntry(OutputFiles const& files, std::string const& name, Step const& step)
{
    std::string const ending = layout() == StepReader::Layout::Apart ? ".vtm" : ".vtu";
    fs::path const file = files.folder() / (name + ending);
    show(step);
    write(file);
    return files.folder().filename() / file.filename();
}

void Exporter::open()
{
    aboutFile(input_, [this] { reader_.open(layout()); });
    stages_->finishOne();
    count_.addShapes(reader_);
}

void Exporter::show(Step const& step)
{
    aboutFile(input_, [&] { reader_.show(step); });
    stages_->finishOne();
    count_.addStep(step);
    count_.addFields(reader_);
}

void Exporter::write(fs::path const& file)
{
    if (layout() == StepReader::Layout::Apart)
        writeBlocks(reader_.model(), reader_.grids(), file);
    else
        writeGrid(*reader_.grids().front()->get(), file);
    stages_->finishOne();
}

} // namespace

ExportSummary exportModel(std::string const& input, std::string const& output,
                          ExportOptions const& options)
{
    bool const isOfParts =
        fs::path(output).extension() == ".pvd" && MoxRead::PartitionIndex::isIndex(input);
    return isOfParts ? exportParts(input, output, options) : Exporter(input, output, options).run();
}

} // namespace Export
