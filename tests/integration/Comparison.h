#ifndef TESTS_INTEGRATION_COMPARISON_H
#define TESTS_INTEGRATION_COMPARISON_H

#include "integration/ExpectedModel.h"

#include <string>

namespace Integration {

/// Reads the file and compares all that is in it with the expectation: every node, every relation,
/// attribute, material and dataset, numbers bit for bit.
void expectFile(std::string const& path, ExpectedModel const& expected);

/// Expects the file to break no rule of the layout.
void expectSound(std::string const& path);

} // namespace Integration

#endif
