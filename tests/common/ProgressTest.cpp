#include "common/Progress.h"
#include "support/Terminal.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <stdexcept>
#include <string>

#include <unistd.h>

namespace {

using Common::Progress;
using std::chrono::milliseconds;
using Support::Terminal;

class Pipe : public Support::Ends
{
public:
    Pipe()
    {
        std::array<int, 2> ends = {};
        if (::pipe(ends.data()) != 0)
            throw std::runtime_error("no pipe for the test");
        reading_ = ends[0];
        writing_ = ends[1];
        neverBlock();
    }
};

/// A clock that goes when it is told to.
class SetClock
{
public:
    Progress::Clock clock()
    {
        return [this] { return now_; };
    }
    void advance(milliseconds time) { now_ += time; }

private:
    Progress::Time now_;
};

std::string bar(std::string const& what, int filled, std::string const& percent)
{
    return "\r\x1B[K" + what + " [" + std::string(static_cast<std::size_t>(filled), '#') +
           std::string(static_cast<std::size_t>(30 - filled), ' ') + "] " + percent;
}

class ProgressOnTerminal : public Support::TerminalTest
{};

char const* const wiped = "\r\x1B[K";

TEST_F(ProgressOnTerminal, ShortWorkShowsNothing)
{
    Terminal const terminal(80);
    SetClock time;
    {
        Progress progress("verify a.mox", terminal.writing(), time.clock());
        time.advance(milliseconds(999));
        progress.show(50, 100);
    }
    EXPECT_EQ(terminal.text(), "");
}

TEST_F(ProgressOnTerminal, AfterASecondABarTellsHowFarTheWorkIs)
{
    Terminal const terminal(80);
    SetClock time;
    Progress progress("verify a.mox", terminal.writing(), time.clock());
    time.advance(milliseconds(1000));
    progress.show(50, 100);
    EXPECT_EQ(terminal.text(), bar("verify a.mox", 15, " 50 %"));
}

TEST_F(ProgressOnTerminal, TheBarIsDrawnTenTimesASecondAtMost)
{
    Terminal const terminal(80);
    SetClock time;
    Progress progress("ls", terminal.writing(), time.clock());
    time.advance(milliseconds(1000));
    progress.show(0, 10);
    EXPECT_EQ(terminal.text(), bar("ls", 0, "  0 %"));
    time.advance(milliseconds(99));
    progress.show(5, 10);
    EXPECT_EQ(terminal.text(), "");
    time.advance(milliseconds(1));
    progress.show(10, 10);
    EXPECT_EQ(terminal.text(), bar("ls", 30, "100 %"));
}

TEST_F(ProgressOnTerminal, TheBarIsGoneWhenTheWorkIsDone)
{
    Terminal const terminal(80);
    SetClock time;
    {
        Progress progress("ls", terminal.writing(), time.clock());
        time.advance(milliseconds(2000));
        progress.show(1, 3);
        EXPECT_EQ(terminal.text(), bar("ls", 9, " 33 %"));
        progress.wipe();
        EXPECT_EQ(terminal.text(), wiped);
    }
    EXPECT_EQ(terminal.text(), "");
}

TEST(Progress, NothingIsShownWhereThereIsNoTerminal)
{
    Pipe const pipe;
    SetClock time;
    {
        Progress progress("ls", pipe.writing(), time.clock());
        time.advance(milliseconds(5000));
        progress.show(1, 3);
    }
    EXPECT_EQ(pipe.text(), "");
}

TEST_F(ProgressOnTerminal, ALineNeverFillsTheTerminal)
{
    Terminal const terminal(50);
    SetClock time;
    Progress progress(std::string(100, 'x'), terminal.writing(), time.clock());
    time.advance(milliseconds(1000));
    progress.show(1, 1);
    EXPECT_EQ(terminal.text(), bar(std::string(10, 'x'), 30, "100 %"));
}

TEST_F(ProgressOnTerminal, ANarrowTerminalGetsTheFigureAlone)
{
    Terminal const terminal(20);
    SetClock time;
    Progress progress("verify a.mox", terminal.writing(), time.clock());
    time.advance(milliseconds(1000));
    progress.show(1, 4);
    EXPECT_EQ(terminal.text(), "\r\x1B[K 25 %");
}

TEST_F(ProgressOnTerminal, ATerminalOfUnknownWidthIsTakenForAUsualOne)
{
    Terminal const terminal(0);
    SetClock time;
    Progress progress(std::string(100, 'x'), terminal.writing(), time.clock());
    time.advance(milliseconds(1000));
    progress.show(1, 1);
    EXPECT_EQ(terminal.text(), bar(std::string(40, 'x'), 30, "100 %"));
}

TEST_F(ProgressOnTerminal, NamesCannotControlTheTerminal)
{
    Terminal const terminal(80);
    SetClock time;
    Progress progress("a\x1B[2Jb\x7F", terminal.writing(), time.clock());
    time.advance(milliseconds(1000));
    progress.show(1, 1);
    EXPECT_EQ(terminal.text(), bar("a?[2Jb?", 30, "100 %"));
}

TEST_F(ProgressOnTerminal, WhatAnotherProcessLeftOverIsWipedOffATerminalOnly)
{
    Terminal const terminal(80);
    Progress::wipeLeftOver(terminal.writing());
    EXPECT_EQ(terminal.text(), "\r\x1B[K");
    Pipe const pipe;
    Progress::wipeLeftOver(pipe.writing());
    EXPECT_EQ(pipe.text(), "");
}

TEST_F(ProgressOnTerminal, NoWorkAtAllIsDone)
{
    Terminal const terminal(80);
    SetClock time;
    Progress progress("ls", terminal.writing(), time.clock());
    time.advance(milliseconds(1000));
    progress.show(0, 0);
    EXPECT_EQ(terminal.text(), bar("ls", 30, "100 %"));
}

} // namespace
