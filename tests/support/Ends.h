#ifndef TESTS_SUPPORT_ENDS_H
#define TESTS_SUPPORT_ENDS_H

#include <array>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace Support {

/// Both ends of a pair of descriptors; what is written to one is read from the other.
class Ends
{
public:
    ~Ends()
    {
        ::close(reading_);
        ::close(writing_);
    }
    Ends(Ends const&) = delete;
    Ends& operator=(Ends const&) = delete;

    int writing() const { return writing_; }

    /// What was written since the last call.
    std::string text() const
    {
        std::string result;
        std::array<char, 4096> piece = {};
        for (ssize_t count = 1; count > 0;) {
            count = ::read(reading_, piece.data(), piece.size());
            if (count > 0)
                result.append(piece.data(), static_cast<std::size_t>(count));
        }
        return result;
    }

protected:
    Ends() = default;
    void neverBlock() const { ::fcntl(reading_, F_SETFL, O_NONBLOCK); }

    int reading_ = -1;
    int writing_ = -1;
};

} // namespace Support

#endif
