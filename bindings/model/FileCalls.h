#ifndef BINDINGS_MODEL_FILECALLS_H
#define BINDINGS_MODEL_FILECALLS_H

#include <Zyl2/Mox2/Model.h>

#include "model/CallsOf.h"
#include "model/Refusal.h"

namespace Bindings {

/// Calls of a model in a file of its own.
class FileCalls final : public CallsOf<Zyl2::Mox2::Model>
{
public:
    void saveTo(std::string const& path, Zyl2::Mox2::SaverOptions const& options) override
    {
        model_.saveTo(path, options);
    }
    void saveTo(std::wstring const& path, Zyl2::Mox2::SaverOptions const& options) override
    {
        model_.saveTo(path, options);
    }
    double waitedSeconds() const override { return model_.waitedSeconds(); }
    void step() override
    {
        refuse<Zyl2::Exception::InvalidObjectState>("this is no model of many ranks");
    }
    void fail(char const* /*sentence*/, int /*errorCode*/) noexcept override {}

private:
    Zyl2::Mox2::Model& model() override { return model_; }

    Zyl2::Mox2::Model model_;
};

} // namespace Bindings

#endif
