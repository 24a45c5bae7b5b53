#include "OutputFile.h"

#include <cstring>
#include <stdexcept>

namespace Mox {

OutputFile::OutputFile(std::string const& path, bool overwrite)
    : file_(path, overwrite), buffer_(file_.path().string()), stream_(&buffer_)
{}

void OutputFile::finish()
{
    bool const isWritten = static_cast<bool>(stream_.flush());
    if (!buffer_.close() || !isWritten) {
        std::string const reason =
            buffer_.error() == 0 ? "" : std::string(": ") + std::strerror(buffer_.error());
        throw std::runtime_error("The file cannot be written" + reason + ".");
    }
    file_.publish();
}

} // namespace Mox
