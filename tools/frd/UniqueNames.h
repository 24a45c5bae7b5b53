#ifndef FRD_UNIQUENAMES_H
#define FRD_UNIQUENAMES_H

#include <set>
#include <string>

namespace Frd {

/// Hands out names of which no two are alike: DISP, then DISP (2), then DISP (3).
class UniqueNames
{
public:
    std::string make(std::string const& name);

private:
    std::set<std::string> used_;
};

} // namespace Frd

#endif
