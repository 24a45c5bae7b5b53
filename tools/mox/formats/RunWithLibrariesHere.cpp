#include "RunWithLibraries.h"

int runWithLibraries(std::string const& /*command*/, std::function<int()> const& action)
{
    return action();
}
