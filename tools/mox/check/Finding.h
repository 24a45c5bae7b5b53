#ifndef MOX_CHECK_FINDING_H
#define MOX_CHECK_FINDING_H

#include "moxread/Node.h"
#include "moxread/Variable.h"

#include <string>

namespace Mox::Check {

enum class Severity
{
    Error,
    Warning,
    Note
};

/// What sort of finding it is. There is one object of each kind; see Kinds.h.
struct Kind
{
    char const* name;
    Severity severity;
};

/// One thing that a model says and cannot mean, or that its writer may not have meant.
struct Finding
{
    Kind const* kind = nullptr;
    /// The node that the finding is about; null when it is about the whole model.
    MoxRead::Node const* node = nullptr;
    /// The dataset that the finding is about; null when it is about the node.
    MoxRead::Variable const* variable = nullptr;
    /// What was expected and what was found, for the sentence "expected ..., found ...".
    std::string expected;
    std::string found;
};

} // namespace Mox::Check

#endif
