#ifndef TESTS_SUPPORT_FILESIZELIMIT_H
#define TESTS_SUPPORT_FILESIZELIMIT_H

#include <sys/resource.h>

#include <csignal>

namespace Support {

/// Lets no file of this process grow past a size for as long as it lives, as on a disk that is
/// nearly full.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &previous_);
        rlimit const limit{bytes, previous_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(FileSizeLimit const&) = delete;
    FileSizeLimit& operator=(FileSizeLimit const&) = delete;
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    void (*handler_)(int);
    rlimit previous_{};
};

} // namespace Support

#endif
