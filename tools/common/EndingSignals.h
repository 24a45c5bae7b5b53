#ifndef COMMON_ENDINGSIGNALS_H
#define COMMON_ENDINGSIGNALS_H

#include <sys/types.h>

namespace Common {

/// From now on a signal that ends the process, sent by somebody or raised by a crash, removes all
/// temporary paths first; the process still ends by that signal. Signals that are ignored stay so,
/// and what is handled already stays handled.
void cleanUpBeforeEnding();

/// Such a signal is passed on to that process first, which is waited for; 0 for none. To be called
/// while signals are held, as the process was started.
void endTogetherWith(pid_t child);

/// Ends this process as the signal ended another one.
[[noreturn]] void endBy(int signal);

} // namespace Common

#endif
