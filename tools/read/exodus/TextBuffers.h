#ifndef READ_EXODUS_TEXTBUFFERS_H
#define READ_EXODUS_TEXTBUFFERS_H

#include <cstddef>
#include <string>
#include <vector>

namespace Exodus {

/// Room for texts of one length at most, as the library fills it.
class TextBuffers
{
public:
    TextBuffers(std::size_t count, std::size_t length)
        : buffers_(count, std::vector<char>(length + 1))
    {
        for (std::vector<char>& buffer : buffers_)
            pointers_.push_back(buffer.data());
    }

    char** pointers() { return pointers_.data(); }

    std::vector<std::string> texts() const { return {pointers_.begin(), pointers_.end()}; }

private:
    std::vector<std::vector<char>> buffers_;
    std::vector<char*> pointers_;
};

} // namespace Exodus

#endif
