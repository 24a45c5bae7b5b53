#ifndef TESTS_FAULT_HOST_H
#define TESTS_FAULT_HOST_H

#include "fault/Faults.h"

#include <Zyl2/Mox2/Model.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>

namespace Fault {

/// What a call ended with. A bit each, so that several make a set.
enum Ending : unsigned int
{
    NoMemory = 1,          // std::bad_alloc, std::length_error
    MemoryAllocation = 2,  // the library's own
    FileNotOpened = 4,     // MiscelleneousException
    FileNotWritten = 8,    // FileWriteException
    OtherOfTheFamily = 16, // any other kind of the library
    OutOfRange = 32,       // std::out_of_range, which getNodeId documents
    Undocumented = 64
};

/// The ending that the exception being handled stands for.
Ending endingOfCurrentException();

/// What became of a host's calls.
struct Outcome
{
    static constexpr std::size_t MaximumFiles = 2;

    /// Set of `Ending`.
    unsigned int endings = 0;
    Ending first{};
    bool firstWasOpening = false;
    /// Set of `Ending`, of the calls of `close` alone.
    unsigned int closeEndings = 0;
    /// A call of `close` after one that failed has to do nothing.
    bool secondCloseFailed = false;
    /// Files that `saveTo` opened.
    std::array<bool, MaximumFiles> isOpened{};
    /// Files that `close` reported as written.
    std::array<bool, MaximumFiles> isWritten{};
};

/// A program that writes models. It holds no memory of its own between two calls.
class Host
{
public:
    enum class Temper
    {
        /// Stops at the first exception, closes, and gives up.
        Careful,
        /// Catches each exception and goes on as if nothing had been.
        Stubborn
    };

    using Paths = std::array<std::string, Outcome::MaximumFiles>;

    Host(Temper temper, Paths const& paths);

    /// Lets the host work until it has finished or given up, and everything is closed.
    /// \param program takes the host
    template <typename Program>
    Outcome run(Program program);

    /// Makes one call of the library.
    /// \param action takes the model
    template <typename Action>
    void call(Action action);

    /// Opens the file of that number with one call of the library.
    /// \param action takes the model and the path
    template <typename Action>
    void open(std::size_t file, Action action);

    void close();

private:
    void makeModel();
    /// \return the exception's ending
    Ending noteException(bool isOpening);
    bool tryToClose();
    void closeUnlessClosed();

    Temper temper_;
    Paths const& paths_;
    Outcome outcome_;
    std::size_t file_ = 0;
    bool isToBeClosed_ = false;
    std::unique_ptr<Zyl2::Mox2::Model> model_;
};

template <typename Program>
Outcome Host::run(Program program)
{
    try {
        makeModel();
        program(*this);
    } catch (...) {
        // The outcome has the exception already.
        closeUnlessClosed();
    }
    AtWork const atWork;
    model_.reset();
    return outcome_;
}

template <typename Action>
void Host::call(Action action)
{
    if (model_ == nullptr)
        return;
    try {
        AtWork const atWork;
        action(*model_);
    } catch (...) {
        noteException(false);
        if (temper_ == Temper::Careful)
            throw;
    }
}

template <typename Action>
void Host::open(std::size_t file, Action action)
{
    if (model_ == nullptr)
        return;
    file_ = file;
    isToBeClosed_ = true;
    try {
        AtWork const atWork;
        action(*model_, paths_[file]);
        outcome_.isOpened[file] = true;
    } catch (...) {
        noteException(true);
        if (temper_ == Temper::Careful)
            throw;
    }
}

} // namespace Fault

#endif
