#ifndef EXCHANGE_STEPINFO_H
#define EXCHANGE_STEPINFO_H

#include "Attribute.h"

#include <optional>
#include <string>

namespace Exchange {

/// One time step, load step or mode. Without a name, its fields belong to no step: so it is where a
/// source knows no time.
struct StepInfo
{
    std::string name;
    std::optional<double> time;
    AttributeList attributes;
    /// Whether what comes under this name again goes on with the step. The source then sees to it
    /// that no two fields of the step have the same name. Else a name that comes again is that of
    /// another step, and is changed.
    bool mayGoOn = false;
};

} // namespace Exchange

#endif
