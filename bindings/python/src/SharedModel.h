#ifndef BINDINGS_PYTHON_SHAREDMODEL_H
#define BINDINGS_PYTHON_SHAREDMODEL_H

#include "model/ModelCalls.h"
#include "model/Refusal.h"

#include <pybind11/pybind11.h>

#include <exception>
#include <memory>
#include <utility>

namespace Python {

/// A model that any thread of Python may call, as it may any object. While one of them writes and
/// the interpreter's lock is released, the others are refused.
class SharedModel
{
public:
    explicit SharedModel(std::unique_ptr<Bindings::ModelCalls> model) : model_(std::move(model)) {}
    SharedModel(SharedModel const&) = delete;
    SharedModel& operator=(SharedModel const&) = delete;

    /// Whoever wants to know of a failure has closed the model before: here it would end the
    /// process.
    ~SharedModel()
    {
        try {
            model_->close();
        } catch (std::exception const&) {
            // The file is incomplete, and its reader says so.
        }
    }

    /// Runs what takes no time worth mentioning.
    /// \param call is given the model
    /// \throws Zyl2::Exception::InvalidObjectState another thread is writing
    template <typename CallT>
    auto run(CallT const& call) -> decltype(call(std::declval<Bindings::ModelCalls&>()))
    {
        Turn const turn(isBusy_);
        return call(*model_);
    }

    /// Runs what writes, while other threads of Python go on. `call` must not touch their objects.
    /// \param call is given the model
    /// \throws Zyl2::Exception::InvalidObjectState another thread is writing
    template <typename CallT>
    void write(CallT const& call)
    {
        Turn const turn(isBusy_);
        pybind11::gil_scoped_release const released;
        call(*model_);
    }

private:
    /// Begins and ends under the interpreter's lock.
    class Turn
    {
    public:
        explicit Turn(bool& isBusy) : isBusy_(isBusy)
        {
            if (isBusy)
                Bindings::refuse<Zyl2::Exception::InvalidObjectState>(
                    "another thread is just writing into the model");
            isBusy = true;
        }
        ~Turn() { isBusy_ = false; }
        Turn(Turn const&) = delete;
        Turn& operator=(Turn const&) = delete;

    private:
        bool& isBusy_;
    };

    std::unique_ptr<Bindings::ModelCalls> model_;
    bool isBusy_ = false;
};

} // namespace Python

#endif
