#ifndef TESTS_SUPPORT_TERMINAL_H
#define TESTS_SUPPORT_TERMINAL_H

#include "support/Ends.h"

#include <array>
#include <stdexcept>
#include <string>

#include <pty.h>

namespace Support {

/// A terminal that keeps what it is sent, as long as it isn't much.
class Terminal : public Ends
{
public:
    /// \param columns 0 for a terminal that doesn't know its width
    explicit Terminal(unsigned short columns = 0)
    {
        winsize size = {};
        size.ws_row = 24;
        size.ws_col = columns;
        std::array<char, 256> name = {};
        if (::openpty(&reading_, &writing_, name.data(), nullptr, &size) != 0)
            throw std::runtime_error("no terminal for the test");
        neverBlock();
        name_ = name.data();
    }

    /// As a file that other programs write to.
    std::string const& name() const { return name_; }

private:
    std::string name_;
};

} // namespace Support

#endif
