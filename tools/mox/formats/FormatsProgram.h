#ifndef MOX_FORMATS_FORMATSPROGRAM_H
#define MOX_FORMATS_FORMATSPROGRAM_H

#include <filesystem>

namespace Mox {

/// Goes on as a program with libraries of other formats, in the same process and with the same
/// arguments. It is looked for where it belongs by this program's own place, never in PATH: a
/// prefix may be moved, and what is found is of the same build.
///
/// Throws std::runtime_error, with one sentence after the name of the program, if it can't be run.
///
/// \param place where it is installed, from the folder of this program
[[noreturn]] void becomeFormatsProgram(std::filesystem::path const& place);

} // namespace Mox

#endif
