#ifndef ZYL2_UTIL_SIGNALSBLOCKED_H
#define ZYL2_UTIL_SIGNALSBLOCKED_H

#include <csignal>

namespace Zyl2Util {

/// While one lives, threads that are started get none of the process's signals: those are for the
/// host's own threads.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &previous_);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }
    SignalsBlocked(SignalsBlocked const&) = delete;
    SignalsBlocked& operator=(SignalsBlocked const&) = delete;

private:
    sigset_t previous_{};
};

} // namespace Zyl2Util

#endif
