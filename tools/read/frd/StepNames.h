#ifndef READ_FRD_STEPNAMES_H
#define READ_FRD_STEPNAMES_H

#include "ResultBlock.h"

#include "common/UniqueNames.h"

#include <map>
#include <string>

namespace Frd {

/// Tells which result blocks belong to the same step, and gives steps and results their names.
class StepNames
{
public:
    /// Name of the step that the block belongs to: Step 1 Increment 3, Step 2 Mode 4, or Step 7
    /// when the file has no 1PSTEP record for it. Where a solver counts no increments, (2), (3)
    /// and so on keep the names apart.
    std::string const& stepName(ResultBlock const& block);

    /// A name for one of the block's results that its step does not have yet.
    std::string resultName(ResultBlock const& block, std::string const& name);

private:
    struct StepEntry
    {
        std::string name;
        Common::UniqueNames resultNames;
    };

    StepEntry& entryOf(ResultBlock const& block);

    std::map<std::string, StepEntry> steps_;
    Common::UniqueNames stepNames_;
};

} // namespace Frd

#endif
