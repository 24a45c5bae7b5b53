#ifndef READ_FRD_WHOLESTEPS_H
#define READ_FRD_WHOLESTEPS_H

#include "ResultBlock.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Frd {

/// Tells which steps of a file are whole that ends too early, as that of a run which diverged, was
/// stopped or still goes on.
class WholeSteps
{
public:
    /// Counts a whole block of the step of that name.
    void add(ResultBlock const& block, std::string const& step);

    /// Drops the step of the block that is cut off, where that is known. Nothing is counted behind
    /// the end.
    void endInStep(std::string const& step);

    /// Drops the last step unless it is whole. It is when it has the results that the increment
    /// before it has; the first one is taken for whole when the file ends right behind a block.
    void endBetweenBlocks(bool endedBehindBlock);

    /// How many blocks were counted, those of the step that was dropped among them.
    std::size_t blockCount() const { return blockCount_; }

    bool isDropped(std::string const& step) const { return dropped_ == step; }

    std::size_t stepCount() const { return steps_.size(); }

    /// How far the file is whole: "3 steps are whole, up to Step 1 Increment 3". Says so where the
    /// last one may lack results of which nothing tells.
    std::string summary() const;

private:
    struct Step
    {
        std::string name;
        /// Number of the solver's analysis, all steps of which are to have the same results.
        std::int32_t number;
        std::set<std::string> results;
    };

    Step& stepOf(ResultBlock const& block, std::string const& name);
    bool hasResultsOfStepBefore(Step const& last) const;

    /// In the order in which they begin.
    std::vector<Step> steps_;
    /// Where each step stands among them, by name.
    std::map<std::string, std::size_t> places_;
    std::string lastName_;
    std::size_t blockCount_ = 0;
    std::optional<std::string> dropped_;
    bool isLastUncertain_ = false;
};

} // namespace Frd

#endif
