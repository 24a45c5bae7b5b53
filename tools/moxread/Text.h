#ifndef MOXREAD_TEXT_H
#define MOXREAD_TEXT_H

#include "moxread/Export.h"

#include <string>

namespace MoxRead {

/// The text in double quotes, fit for one line of a terminal: control bytes, quotes and backslashes
/// are escaped.
MOXREAD_EXPORT std::string quoted(std::string const& text);

} // namespace MoxRead

#endif
