#include "SilencedStreams.h"

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace VtkRead {

namespace {

/// Returns where the stream went before; -1 when it can't be had, and then it stays as it is.
int silence(int stream)
{
    int const before = ::fcntl(stream, F_DUPFD_CLOEXEC, 0);
    int const nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (before >= 0 && nowhere >= 0)
        ::dup2(nowhere, stream);
    if (nowhere >= 0)
        ::close(nowhere);
    return before;
}

void restore(int stream, int before)
{
    if (before < 0)
        return;
    ::dup2(before, stream);
    ::close(before);
}

} // namespace

SilencedStreams::SilencedStreams()
{
    // What the process itself has written must not get lost with the rest.
    std::fflush(nullptr);
    output_ = silence(STDOUT_FILENO);
    error_ = silence(STDERR_FILENO);
}

SilencedStreams::~SilencedStreams()
{
    std::fflush(nullptr);
    restore(STDOUT_FILENO, output_);
    restore(STDERR_FILENO, error_);
}

} // namespace VtkRead
