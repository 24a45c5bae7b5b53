#include "ExportCount.h"

namespace Export {

namespace fs = std::filesystem;

void ExportCount::addShapes(StepReader const& reader)
{
    for (auto const& grid : reader.grids()) {
        for (Placement const& placement : grid->placements()) {
            ++summary_.shapes;
            summary_.nodes += placement.mesh.nodeCount;
            summary_.elements += placement.mesh.hasElements() ? placement.mesh.elementCount : 0;
        }
    }
}

void ExportCount::addStep(Step const& step)
{
    if (!step.name.empty())
        summary_.steps.push_back(step.name);
}

void ExportCount::addFields(StepReader const& reader)
{
    for (auto const& grid : reader.grids())
        fields_.merge(grid->fieldNames());
}

void ExportCount::addFile(fs::path const& file)
{
    ++summary_.files;
    summary_.bytes += fs::file_size(file);
}

void ExportCount::addFiles(OutputFiles const& files)
{
    addFile(files.file());
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(files.folder()))
        if (entry.is_regular_file())
            addFile(entry.path());
}

ExportSummary ExportCount::summary(Warnings const& warnings) const
{
    ExportSummary summary = summary_;
    summary.fields.assign(fields_.begin(), fields_.end());
    summary.warnings = warnings.sentences();
    return summary;
}

std::string numberedName(std::string const& prefix, std::size_t number, std::size_t count)
{
    std::string const digits = std::to_string(number);
    std::size_t const width = std::to_string(count).size();
    return prefix + std::string(width - digits.size(), '0') + digits;
}

} // namespace Export
