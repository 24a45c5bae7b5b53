#ifndef MOX_PRINT_MODELCONTENTS_H
#define MOX_PRINT_MODELCONTENTS_H

#include "StepUse.h"
#include "ValueText.h"

#include "common/Progress.h"
#include "moxread/Model.h"

#include <unordered_map>
#include <vector>

namespace Mox {

/// A node of a model and what is below it, with the ranges of the datasets' values.
class ModelContents
{
public:
    /// Reads the values of all datasets from the node on, one block at a time, to know their
    /// ranges.
    ModelContents(MoxRead::Model& model, MoxRead::Node const& first, Common::Progress& progress);

    MoxRead::Model const& model() const { return model_; }
    MoxRead::Node const& first() const { return first_; }
    bool isWholeModel() const { return first_.parent == 0; }
    std::vector<StepUse> const& steps() const { return steps_; }
    /// False for an outline, which has no ranges either.
    bool hasValues() const { return model_.hasValues(); }
    /// The range of a dataset's own values, or of those that it shares with another.
    ValueRange const& rangeOf(MoxRead::Variable const& variable) const;

private:
    MoxRead::Model::Variables storedVariables() const;
    void readRanges(Common::Progress& progress);

    MoxRead::Model& model_;
    MoxRead::Node const& first_;
    std::vector<StepUse> steps_;
    std::unordered_map<MoxRead::Variable const*, ValueRange> ranges_;
};

} // namespace Mox

#endif
