#ifndef READ_FRD_SOURCE_H
#define READ_FRD_SOURCE_H

#include "PartRows.h"
#include "Reader.h"
#include "StepNames.h"

#include "exchange/Report.h"
#include "exchange/SequentialSource.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace Frd {

/// What a solver's result file holds, for a model: a part for each group, material and dimension of
/// its elements, and the result blocks on the parts' nodes, one block in memory at a time.
class Source : public Exchange::SequentialSource
{
public:
    /// Reads up to the first result block; throws `Error`.
    explicit Source(std::filesystem::path const& path);

    std::string modelName() const override { return reader_.header().modelName; }
    Exchange::AttributeList attributes() const override;
    std::vector<Exchange::Part> readParts() override;
    void readSteps(StepVisitor const& startStep, FieldVisitor const& addField) override;
    /// Counts bytes: nobody knows the steps before the end.
    Stage stage() const override { return {reader_.bytesRead(), reader_.size()}; }

private:
    Exchange::StepInfo stepOf(ResultBlock const& block);
    void addFields(ResultBlock const& block, FieldVisitor const& addField);

    Reader reader_;
    std::vector<PartRows> rows_;
    StepNames names_;
};

/// Opens a solver's result file (.frd) and reads its mesh; throws `Exchange::Error`. There is
/// nothing to report in reading: whatever is in such a file has its place in a model.
std::unique_ptr<Exchange::SequentialSource> open(std::filesystem::path const& path,
                                                 Exchange::Report& report);

} // namespace Frd

#endif
