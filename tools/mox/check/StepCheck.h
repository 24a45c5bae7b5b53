#ifndef MOX_CHECK_STEPCHECK_H
#define MOX_CHECK_STEPCHECK_H

#include "Findings.h"

#include "moxread/Model.h"

#include <map>
#include <optional>
#include <string>

namespace Mox::Check {

/// Checks the times of steps: that all datasets of a step say the same, and that the steps of each
/// dataset stand in the order of their times.
class StepCheck
{
public:
    StepCheck(MoxRead::Model const& model, Findings& findings) : model_(model), findings_(findings)
    {}

    void run();

private:
    struct Step
    {
        MoxRead::Node const* node = nullptr;
        MoxRead::Variable const* variable = nullptr;
        std::optional<double> time;
        /// Whether it has what other analyses have in place of a time.
        bool hasOther = false;
    };

    void collect(MoxRead::Node const& node, MoxRead::Variable const& variable);
    void tellDifference(Step const& step, MoxRead::Node const& node,
                        MoxRead::Variable const& variable, double time);
    void checkPresence();
    void checkOrder(MoxRead::Node const& node);

    MoxRead::Model const& model_;
    Findings& findings_;
    std::map<std::string, Step> steps_;
};

} // namespace Mox::Check

#endif
