#include "fault/Host.h"

#include <Zyl2/Exception/Exception.h>

#include <new>
#include <stdexcept>

namespace Fault {

Ending endingOfCurrentException()
{
    try {
        throw;
    } catch (Zyl2::Exception::MemoryAllocationException const&) {
        return MemoryAllocation;
    } catch (Zyl2::Exception::MiscelleneousException const&) {
        return FileNotOpened;
    } catch (Zyl2::Exception::FileWriteException const&) {
        return FileNotWritten;
    } catch (Zyl2::Exception::Exception const&) {
        return OtherOfTheFamily;
    } catch (std::bad_alloc const&) {
        return NoMemory;
    } catch (std::length_error const&) {
        return NoMemory;
    } catch (std::out_of_range const&) {
        return OutOfRange;
    } catch (...) {
        return Undocumented;
    }
}

namespace {

/// Is thrown to end the program of a careful host, after the outcome has the reason.
struct HasGivenUp
{};

} // namespace

Host::Host(Temper temper, Paths const& paths) : temper_(temper), paths_(paths) {}

void Host::makeModel()
{
    try {
        AtWork const atWork;
        model_ = std::make_unique<Zyl2::Mox2::Model>();
    } catch (...) {
        noteException(false);
        throw;
    }
}

Ending Host::noteException(bool isOpening)
{
    Ending const ending = endingOfCurrentException();
    if (outcome_.endings == 0) {
        outcome_.first = ending;
        outcome_.firstWasOpening = isOpening;
    }
    outcome_.endings |= ending;
    return ending;
}

/// \return whether the model is closed without a failure
bool Host::tryToClose()
{
    try {
        AtWork const atWork;
        model_->close();
        return true;
    } catch (...) {
        outcome_.closeEndings |= noteException(false);
    }
    return false;
}

void Host::close()
{
    if (model_ == nullptr)
        return;
    isToBeClosed_ = false;
    outcome_.isWritten[file_] = tryToClose();
    if (outcome_.isWritten[file_])
        return;
    outcome_.secondCloseFailed |= !tryToClose();
    if (temper_ == Temper::Careful)
        throw HasGivenUp();
}

void Host::closeUnlessClosed()
{
    if (!isToBeClosed_)
        return;
    temper_ = Temper::Stubborn;
    close();
}

} // namespace Fault
