#ifndef BINDINGS_C_OTHERMODELS_H
#define BINDINGS_C_OTHERMODELS_H

#include <moxwriter.h>

#include <Zyl2/Export.h>
#include <Zyl2/Mox2/SaverOptions.h>

#include "model/ModelCalls.h"

#include <memory>
#include <string>

namespace Zyl2 {
namespace C {

// For libraries of this project that bring models of another kind: handles of them are handles of
// models.

/// How such a model is made.
class ModelMaker
{
public:
    ModelMaker() = default;
    virtual ~ModelMaker() = default;
    ModelMaker(ModelMaker const&) = delete;
    ModelMaker& operator=(ModelMaker const&) = delete;

    virtual std::unique_ptr<Bindings::ModelCalls> make(std::string const& path,
                                                       Mox2::SaverOptions const& options) = 0;
    /// Called instead where the arguments are not what they have to be.
    virtual void giveUp() noexcept = 0;
};

/// \param model   receives the handle, or null
/// \param options may be null
/// \return its status
ZYL2_EXPORT mox_status createModel(mox_model** model, char const* path, std::size_t pathLength,
                                   mox_options const* options, ModelMaker& maker) noexcept;

/// Calls what is behind a handle, and remembers how that failed.
/// \param context passed on
ZYL2_EXPORT mox_status callModel(mox_model* model,
                                 void (*call)(Bindings::ModelCalls& model, void* context),
                                 void* context) noexcept;

} // namespace C
} // namespace Zyl2

#endif
