#ifndef COMMON_SIGNALSHELD_H
#define COMMON_SIGNALSHELD_H

#include <csignal>

namespace Common {

/// The signals by which people, shells and systems ask a process to end.
sigset_t endingSignals();

/// While there is one, a signal that asks to end waits: what has to be done as a whole, is.
class SignalsHeld
{
public:
    SignalsHeld();
    ~SignalsHeld();

    SignalsHeld(SignalsHeld const&) = delete;
    SignalsHeld& operator=(SignalsHeld const&) = delete;

private:
    sigset_t before_;
};

} // namespace Common

#endif
