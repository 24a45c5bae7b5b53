#pragma once

#include <string>

namespace MoxRead {

/// The text in double quotes, fit for one line of a terminal: control bytes, quotes and backslashes
/// are escaped.
std::string quoted(const std::string& text);

} // namespace MoxRead
