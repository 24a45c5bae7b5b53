#ifndef EXPORT_EXPORTCOUNT_H
#define EXPORT_EXPORTCOUNT_H

#include "Export.h"
#include "OutputFiles.h"
#include "StepReader.h"

#include <filesystem>
#include <set>
#include <string>

namespace Export {

/// Counts what is written.
class ExportCount
{
public:
    void addShapes(StepReader const& reader);
    void addStep(Step const& step);
    /// Counts the fields of the step that the reader shows.
    void addFields(StepReader const& reader);
    void addFile(std::filesystem::path const& file);
    void addFiles(OutputFiles const& files);

    ExportSummary summary(Warnings const& warnings) const;

private:
    ExportSummary summary_;
    std::set<std::string> fields_;
};

/// A name with a number from 1 on, in as many digits as the last one has, so that a folder lists
/// them in their order.
std::string numberedName(std::string const& prefix, std::size_t number, std::size_t count);

} // namespace Export

#endif
