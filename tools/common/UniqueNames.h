#ifndef COMMON_UNIQUENAMES_H
#define COMMON_UNIQUENAMES_H

#include <map>
#include <set>
#include <string>

namespace Common {

/// Hands out names of which no two are alike: DISP, then DISP (2), then DISP (3).
class UniqueNames
{
public:
    std::string make(std::string const& name);

private:
    std::set<std::string> used_;
    /// The number that the next name is tried with; all below are known to be taken.
    std::map<std::string, int> next_;
};

} // namespace Common

#endif
