#include "Handle.h"
#include "Text.h"

using Zyl2::C::contentOf;
using Zyl2::C::contentOr;
using Zyl2::C::guarded;

mox_status mox_steps_create(mox_steps** steps)
{
    return Zyl2::C::create(steps);
}

mox_status mox_steps_destroy(mox_steps* steps)
{
    return Zyl2::C::destroy(steps);
}

mox_status mox_steps_clear(mox_steps* steps)
{
    return guarded([=] { contentOf(steps).clear(); });
}

mox_status mox_steps_add(mox_steps* steps, char const* name, size_t name_length,
                         mox_attributes const* attributes)
{
    return guarded([=] {
        auto& content = contentOf(steps);
        auto const& given = contentOr(attributes, Zyl2::Mox2::Model::emptyAttributes());
        content.emplace_back(Zyl2::C::textFrom(name, name_length, "name"), given);
    });
}
