#ifndef MOX_CHECK_VALUECHECK_H
#define MOX_CHECK_VALUECHECK_H

#include "Findings.h"

#include "moxread/Model.h"

#include <functional>
#include <unordered_map>

namespace Mox::Check {

/// Counts the values of coordinates and results that are no finite numbers.
class ValueCheck
{
public:
    ValueCheck(MoxRead::Model& model, Findings& findings) : model_(model), findings_(findings) {}

    /// Reads all datasets of floats, one at a time, each once.
    void run(MoxRead::ProgressVisitor const& tell);

private:
    void check(MoxRead::Variable const& variable, MoxRead::Dataset const& dataset);
    void checkPositions(MoxRead::Variable const& variable, MoxRead::Dataset const& dataset);
    void checkResults(MoxRead::Variable const& variable, MoxRead::Dataset const& dataset);

    MoxRead::Model& model_;
    Findings& findings_;
    std::unordered_map<MoxRead::Variable const*, MoxRead::Node const*> owners_;
};

} // namespace Mox::Check

#endif
