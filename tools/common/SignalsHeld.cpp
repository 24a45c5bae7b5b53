#include "SignalsHeld.h"

#include <initializer_list>

namespace Common {

sigset_t endingSignals()
{
    sigset_t signals;
    ::sigemptyset(&signals);
    for (int const signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT})
        ::sigaddset(&signals, signal);
    return signals;
}

SignalsHeld::SignalsHeld() : before_()
{
    sigset_t const signals = endingSignals();
    ::pthread_sigmask(SIG_BLOCK, &signals, &before_);
}

SignalsHeld::~SignalsHeld()
{
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

} // namespace Common
