#ifndef BINDINGS_MODEL_PARTITIONEDCALLS_H
#define BINDINGS_MODEL_PARTITIONEDCALLS_H

#include <Zyl2/Mpi/PartitionedModel.h>

#include "model/CallsOf.h"
#include "model/Refusal.h"

#include <optional>

namespace Bindings {

/// Calls of a model that many ranks hold.
class PartitionedCalls final : public CallsOf<Zyl2::Mpi::PartitionedModel>
{
public:
    /// Comes first, and makes the model.
    void open(MPI_Comm comm, std::string const& path, Zyl2::Mpi::PartitionedOptions const& options)
    {
        model_.emplace(comm, path, options);
    }

    void saveTo(std::string const& /*path*/, Zyl2::Mox2::SaverOptions const& /*options*/) override
    {
        refuseSaving();
    }
    void saveTo(std::wstring const& /*path*/, Zyl2::Mox2::SaverOptions const& /*options*/) override
    {
        refuseSaving();
    }
    double waitedSeconds() const override { return model_->waitedSeconds(); }
    void step() override { model_->step(); }
    void fail(char const* sentence, int errorCode) noexcept override
    {
        model_->fail(sentence, errorCode);
    }

private:
    Zyl2::Mpi::PartitionedModel& model() override { return *model_; }

    [[noreturn]] static void refuseSaving()
    {
        refuse<Zyl2::Exception::InvalidObjectState>("a model of many ranks has its files already");
    }

    std::optional<Zyl2::Mpi::PartitionedModel> model_;
};

/// For a rank that can't even make the model: lets the others know, which wait for it to do so.
/// Collective with making one.
inline void failToOpen(MPI_Comm comm) noexcept
{
    try {
        // An empty path is not what the other ranks ask for, and names no file: all are refused.
        Zyl2::Mpi::PartitionedModel const none(comm, std::string());
    } catch (std::exception const&) {
        // The caller tells the host what was wrong; the refusal of the empty path adds nothing.
    }
}

} // namespace Bindings

#endif
