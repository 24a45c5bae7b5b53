#include <moxwriter_mpi.h>

#include "c/OtherModels.h"
#include "model/PartitionedCalls.h"

using Bindings::ModelCalls;
using Bindings::PartitionedCalls;
using Zyl2::Mpi::PartitionedOptions;

namespace {

/// Lets the other ranks know of whatever keeps this one from making the model.
class Maker final : public Zyl2::C::ModelMaker
{
public:
    Maker(MPI_Comm comm, int ranksPerFile, std::size_t messageBytes)
        : comm_(comm), ranksPerFile_(ranksPerFile), messageBytes_(messageBytes)
    {}

    std::unique_ptr<ModelCalls> make(std::string const& path,
                                     Zyl2::Mox2::SaverOptions const& options) override
    {
        std::unique_ptr<PartitionedCalls> calls;
        PartitionedOptions all;
        try {
            calls = std::make_unique<PartitionedCalls>();
            all.saver = options;
        } catch (...) {
            giveUp();
            throw;
        }
        all.ranksPerFile = ranksPerFile_;
        if (messageBytes_ != 0)
            all.messageBytes = messageBytes_;
        calls->open(comm_, path, all);
        return calls;
    }

    void giveUp() noexcept override { Bindings::failToOpen(comm_); }

private:
    MPI_Comm comm_;
    int ranksPerFile_;
    std::size_t messageBytes_;
};

} // namespace

mox_status mox_partitioned_model_create(mox_model** model, MPI_Comm comm, char const* path,
                                        size_t path_length, int ranks_per_file,
                                        size_t message_bytes, mox_options const* options)
{
    Maker maker(comm, ranks_per_file, message_bytes);
    return Zyl2::C::createModel(model, path, path_length, options, maker);
}

mox_status mox_partitioned_model_create_f(mox_model** model, MPI_Fint comm, char const* path,
                                          size_t path_length, int ranks_per_file,
                                          size_t message_bytes, mox_options const* options)
{
    return mox_partitioned_model_create(model, MPI_Comm_f2c(comm), path, path_length,
                                        ranks_per_file, message_bytes, options);
}

mox_status mox_model_step(mox_model* model)
{
    return Zyl2::C::callModel(
        model, [](ModelCalls& called, void* /*context*/) { called.step(); }, nullptr);
}
