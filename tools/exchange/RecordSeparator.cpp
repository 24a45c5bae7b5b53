#include "RecordSeparator.h"

#include <algorithm>

namespace Exchange {

namespace {

constexpr char recordSeparator = '\x1E';

} // namespace

std::string withoutRecordSeparator(std::string const& name, Report& report)
{
    if (name.find(recordSeparator) == std::string::npos)
        return name;
    std::string changed = name;
    std::replace(changed.begin(), changed.end(), recordSeparator, '_');
    report.warn("The name '" + changed +
                "' has an underscore in place of a byte that separates names.");
    return changed;
}

} // namespace Exchange
