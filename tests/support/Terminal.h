#ifndef TESTS_SUPPORT_TERMINAL_H
#define TESTS_SUPPORT_TERMINAL_H

#include "support/Ends.h"

#include <gtest/gtest.h>

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

    /// Not where /dev/pts isn't mounted, for one.
    static bool canBeHad()
    {
        try {
            Terminal const terminal;
            return true;
        } catch (std::runtime_error const&) {
            return false;
        }
    }

private:
    std::string name_;
};

constexpr char const* noTerminalHere =
    "this test needs a pseudo terminal, and none can be had here";

/// Tests that need a terminal, and are skipped where none can be had.
class TerminalTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!Terminal::canBeHad())
            GTEST_SKIP() << noTerminalHere;
    }
};

} // namespace Support

#endif
