#pragma once

#include <functional>
#include <ostream>
#include <string>

/// Runs an action on a file and returns the exit status: 0, or 1 after one line on `err`, which
/// names the file and says what is wrong with it.
int runOnFile(const std::string& path, std::ostream& err, const std::function<void()>& action);
