#include "Failures.h"
#include "Options.h"
#include "SharedModel.h"
#include "model/PartitionedCalls.h"

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <memory>
#include <string>

namespace Python {

namespace {

/// A model that many ranks hold; other threads of Python go on while this one waits for other
/// ranks.
class PartitionedModel : public SharedModel
{
public:
    PartitionedModel(MPI_Fint comm, std::string const& path, int ranksPerFile,
                     std::size_t messageBytes, Options const& options)
        : SharedModel(opened(MPI_Comm_f2c(comm), path, ranksPerFile, messageBytes, options))
    {}

private:
    static std::unique_ptr<Bindings::ModelCalls> opened(MPI_Comm comm, std::string const& path,
                                                        int ranksPerFile, std::size_t messageBytes,
                                                        Options const& options)
    {
        pybind11::gil_scoped_release const released;
        std::unique_ptr<Bindings::PartitionedCalls> calls;
        Zyl2::Mpi::PartitionedOptions all;
        try {
            calls = std::make_unique<Bindings::PartitionedCalls>();
            all.saver = saverOptionsOf(options);
        } catch (...) {
            Bindings::failToOpen(comm);
            throw;
        }
        all.ranksPerFile = ranksPerFile;
        if (messageBytes != 0)
            all.messageBytes = messageBytes;
        calls->open(comm, path, all);
        return calls;
    }
};

void failToOpen(MPI_Fint comm)
{
    pybind11::gil_scoped_release const released;
    Bindings::failToOpen(MPI_Comm_f2c(comm));
}

} // namespace

} // namespace Python

PYBIND11_MODULE(_mpi, module)
{
    using Bindings::ModelCalls;
    using Python::PartitionedModel;
    using Python::SharedModel;

    pybind11::module_::import("moxwriter._writer");
    pybind11::register_local_exception_translator(Python::translate);

    module.def("fail_to_open", Python::failToOpen);

    pybind11::class_<PartitionedModel, SharedModel>(module, "PartitionedModel")
        .def(pybind11::init<MPI_Fint, std::string const&, int, std::size_t,
                            Python::Options const&>())
        .def("step",
             [](PartitionedModel& model) { model.write([](ModelCalls& open) { open.step(); }); })
        .def("fail", [](PartitionedModel& model, std::string const& sentence, int code) {
            model.run([&](ModelCalls& open) { open.fail(sentence.c_str(), code); });
        });
}
