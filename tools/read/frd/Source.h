#ifndef READ_FRD_SOURCE_H
#define READ_FRD_SOURCE_H

#include "PartRows.h"
#include "Reader.h"
#include "Results.h"

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
    /// Reads up to the first result block; throws `Error`. The report gets what is wrong but does
    /// no harm.
    Source(std::filesystem::path const& path, Exchange::Report& report);

    std::string modelName() const override { return reader_.header().modelName; }
    Exchange::AttributeList attributes() const override;
    std::vector<Exchange::Part> readParts() override;
    void readSteps(StepVisitor const& startStep, FieldVisitor const& addField) override;
    /// Reads the whole file once more, beforehand: which steps are whole shows at its end only.
    bool keepWholeSteps() override;
    /// Counts bytes: nobody knows the steps before the end.
    Stage stage() const override { return {reader_.bytesRead(), reader_.size()}; }

private:
    std::filesystem::path path_;
    Exchange::Report& report_;
    Reader reader_;
    Results results_;
    std::vector<PartRows> parts_;
};

/// Opens a solver's result file (.frd) and reads its mesh; throws `Exchange::Error`.
std::unique_ptr<Exchange::SequentialSource> open(std::filesystem::path const& path,
                                                 Exchange::Report& report);

} // namespace Frd

#endif
