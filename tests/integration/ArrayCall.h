#ifndef TESTS_INTEGRATION_ARRAYCALL_H
#define TESTS_INTEGRATION_ARRAYCALL_H

#include "integration/AttributeSet.h"
#include "integration/Values.h"

#include <Zyl2/Mox2/Model.h>

#include <optional>
#include <string>
#include <vector>

namespace Integration {

struct NamedStep
{
    std::string name;
    AttributeSet attributes;
};

/// All that one call of `addArrayProperty` is told, and in which of its forms.
struct ArrayCall
{
    Zyl2::Mox2::DatasetType type = Zyl2::Mox2::DatasetType::Result10;
    Values values;
    std::vector<unsigned int> ids;
    /// None for the form without a name.
    std::optional<std::string> name = std::nullopt;
    std::vector<NamedStep> steps = std::vector<NamedStep>(1);
    AttributeSet attributes = AttributeSet();
    /// Given as `Array1d`; of width 1 only.
    bool asColumn = false;
    /// The one id given as a number.
    bool asSingleId = false;
    /// The one id given as an `int`.
    bool asInt = false;
    /// The one step given as `Step`.
    bool asSingleStep = false;

    void run(Zyl2::Mox2::Model& model) const;
};

} // namespace Integration

#endif
