#include "WholeSteps.h"

#include <algorithm>

namespace Frd {

WholeSteps::Step& WholeSteps::stepOf(ResultBlock const& block, std::string const& name)
{
    auto const [place, isNew] = places_.try_emplace(name, steps_.size());
    if (isNew) {
        std::int32_t const number = block.step ? block.step->step : block.stepNumber;
        steps_.push_back({name, number, {}});
    }
    return steps_[place->second];
}

void WholeSteps::add(ResultBlock const& block, std::string const& step)
{
    ++blockCount_;
    lastName_ = step;
    stepOf(block, step).results.insert(block.name);
}

void WholeSteps::endInStep(std::string const& step)
{
    dropped_ = step;
    steps_.erase(std::remove_if(steps_.begin(), steps_.end(),
                                [&step](Step const& other) { return other.name == step; }),
                 steps_.end());
}

void WholeSteps::endBetweenBlocks(bool endedBehindBlock)
{
    auto const last = std::find_if(steps_.begin(), steps_.end(),
                                   [this](Step const& step) { return step.name == lastName_; });
    if (last == steps_.end())
        return;
    bool const isFirst = std::none_of(
        steps_.begin(), last, [last](Step const& step) { return step.number == last->number; });
    isLastUncertain_ = isFirst && endedBehindBlock;
    if (isFirst ? !endedBehindBlock : !hasResultsOfStepBefore(*last))
        endInStep(std::string(lastName_));
}

bool WholeSteps::hasResultsOfStepBefore(Step const& last) const
{
    auto const before = std::find_if(steps_.rbegin(), steps_.rend(), [&last](Step const& step) {
        return &step < &last && step.number == last.number;
    });
    return before != steps_.rend() && std::includes(last.results.begin(), last.results.end(),
                                                    before->results.begin(), before->results.end());
}

std::string WholeSteps::summary() const
{
    if (steps_.empty())
        return "no step is whole";
    std::string const last =
        steps_.back().name + (isLastUncertain_ ? ", if no more results of it were to come" : "");
    if (steps_.size() == 1)
        return "1 step is whole, " + last;
    return std::to_string(steps_.size()) + " steps are whole, up to " + last;
}

} // namespace Frd
