#ifndef READ_FRD_RESULTSOURCE_H
#define READ_FRD_RESULTSOURCE_H

#include "Reader.h"
#include "ShapePartition.h"
#include "StepNames.h"

#include "exchange/SequentialSource.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Frd {

/// What a solver's result file holds, for a model: a part for each group, material and dimension of
/// its elements, and the result blocks on the parts' nodes, one block in memory at a time.
class ResultSource : public Exchange::SequentialSource
{
public:
    /// Reads up to the first result block; throws `Error`.
    explicit ResultSource(std::filesystem::path const& path);

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
    std::vector<Shape> shapes_;
    StepNames names_;
};

} // namespace Frd

#endif
