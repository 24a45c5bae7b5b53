#ifndef TESTS_FAULT_SCENARIOS_H
#define TESTS_FAULT_SCENARIOS_H

#include "fault/Host.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace Fault {

/// Something that hosts do with the library.
struct Scenario
{
    std::string name;
    /// Text of MOXWRITER_DEFAULT_BLOCK_SIZE.
    std::string blockSize;
    std::function<void(Host&)> program;
};

/// Names a scenario in the output of tests.
inline void PrintTo(Scenario const& scenario, std::ostream* to)
{
    *to << scenario.name;
}

/// Together they make every call of the facade, each on few values.
std::vector<Scenario> const& smallScenarios();

/// More than 220 blocks, so that there are two index blocks: too slow to fail at every allocation.
Scenario manyBlocks();

} // namespace Fault

#endif
