#ifndef READ_FRD_RESULTS_H
#define READ_FRD_RESULTS_H

#include "PartRows.h"
#include "Reader.h"
#include "ResultBlock.h"
#include "StepNames.h"
#include "WholeSteps.h"

#include "exchange/Report.h"
#include "exchange/SequentialSource.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Frd {

/// Makes steps and fields of the result blocks of a file, one block in memory at a time.
class Results
{
public:
    explicit Results(Reader& reader) : reader_(reader) {}

    /// Lets a file that ends too early be read for its whole steps. To know them, it is read once
    /// more beforehand. The report gets what is left out.
    void keepWholeSteps(std::filesystem::path const& path, Exchange::Report& report);

    /// Where and why the file ends too early, when its whole steps are all that is wanted.
    std::string const& truncation() const { return truncation_; }

    /// Hands over all blocks, in the file's order, as `Exchange::SequentialSource` says.
    void readSteps(std::vector<PartRows> const& parts,
                   Exchange::SequentialSource::StepVisitor const& startStep,
                   Exchange::SequentialSource::FieldVisitor const& addField);

private:
    bool nextBlock(ResultBlock& block);
    Exchange::StepInfo stepOf(ResultBlock const& block);
    void addFields(ResultBlock const& block, std::vector<PartRows> const& parts,
                   Exchange::SequentialSource::FieldVisitor const& addField);

    Reader& reader_;
    StepNames names_;
    WholeSteps steps_;
    std::string truncation_;
    WholeSteps kept_;
};

} // namespace Frd

#endif
