#include "OutputFile.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>

OutputFile::OutputFile(std::string const& path, bool overwrite)
    : file_(path, overwrite), stream_(file_.path(), std::ios::binary | std::ios::trunc)
{}

void OutputFile::finish()
{
    errno = 0;
    stream_.close();
    if (!stream_) {
        std::string const reason = errno == 0 ? "" : std::string(": ") + std::strerror(errno);
        throw std::runtime_error("The file cannot be written" + reason + ".");
    }
    file_.publish();
}
