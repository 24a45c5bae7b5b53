#include "Export.h"

#include "AboutFile.h"
#include "BlockFiles.h"
#include "OutputFiles.h"
#include "Stages.h"
#include "StepReader.h"
#include "XmlFiles.h"
#include "common/PartialFile.h"

#include <filesystem>
#include <optional>
#include <set>

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
    CollectionEntry writeEntry(OutputFiles const& files, std::string const& name, Step const& step);
    void open();
    void show(Step const& step);
    void write(fs::path const& file);
    void countParts();
    void countFiles(OutputFiles const& files);
    void countFile(fs::path const& file);

    std::string input_;
    std::string output_;
    ExportOptions const& options_;
    StepReader reader_;
    ExportSummary summary_;
    std::set<std::string> fields_;
    std::optional<Stages> stages_;
};

// So that a folder lists them in the order of the steps.
std::string entryName(std::size_t number, std::size_t count)
{
    std::string const digits = std::to_string(number);
    std::size_t const width = std::to_string(count).size();
    return "step_" + std::string(width - digits.size(), '0') + digits;
}

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
    summary_.fields.assign(fields_.begin(), fields_.end());
    summary_.warnings = reader_.warnings().sentences();
    return summary_;
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
    countFile(file.path());
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
    countFiles(files);
    files.publish();
}

void Exporter::writeAll(OutputFiles const& files, std::vector<Step> const& steps)
{
    std::vector<CollectionEntry> entries;
    entries.reserve(steps.size());
    for (Step const& step : steps)
        entries.push_back(writeEntry(files, entryName(entries.size() + 1, steps.size()), step));
    writeCollection(entries, files.file());
}

CollectionEntry Exporter::writeEntry(OutputFiles const& files, std::string const& name,
                                     Step const& step)
{
    std::string const ending = layout() == StepReader::Layout::Apart ? ".vtm" : ".vtu";
    fs::path const file = files.folder() / (name + ending);
    show(step);
    write(file);
    return {step.time, files.folder().filename() / file.filename()};
}

void Exporter::open()
{
    aboutFile(input_, [this] { reader_.open(layout()); });
    stages_->finishOne();
    countParts();
}

void Exporter::show(Step const& step)
{
    aboutFile(input_, [&] { reader_.show(step); });
    stages_->finishOne();
    if (!step.name.empty())
        summary_.steps.push_back(step.name);
    for (auto const& grid : reader_.grids())
        fields_.merge(grid->fieldNames());
}

void Exporter::write(fs::path const& file)
{
    if (layout() == StepReader::Layout::Apart)
        writeBlocks(reader_.model(), reader_.grids(), file);
    else
        writeGrid(*reader_.grids().front()->get(), file);
    stages_->finishOne();
}

void Exporter::countParts()
{
    for (auto const& grid : reader_.grids()) {
        for (Placement const& placement : grid->placements()) {
            ++summary_.shapes;
            summary_.nodes += placement.mesh.nodeCount;
            summary_.elements += placement.mesh.hasElements() ? placement.mesh.elementCount : 0;
        }
    }
}

void Exporter::countFiles(OutputFiles const& files)
{
    countFile(files.file());
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(files.folder()))
        if (entry.is_regular_file())
            countFile(entry.path());
}

void Exporter::countFile(fs::path const& file)
{
    ++summary_.files;
    summary_.bytes += fs::file_size(file);
}

} // namespace

ExportSummary exportModel(std::string const& input, std::string const& output,
                          ExportOptions const& options)
{
    return Exporter(input, output, options).run();
}

} // namespace Export
