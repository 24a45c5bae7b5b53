#ifndef TESTS_INTEGRATION_CALLSEQUENCE_H
#define TESTS_INTEGRATION_CALLSEQUENCE_H

#include "integration/Random.h"

#include <array>
#include <string>

namespace Integration {

/// Sizes of a full block that sequences are worth running with.
extern std::array<char const*, 6> const blockSizes;

/// Makes random calls of a model, most of them valid, with values and texts of all kinds, and
/// checks each answer and the file. \param path where the file is to be; there must be none
void runCallSequence(Random& random, std::string const& path);

} // namespace Integration

#endif
