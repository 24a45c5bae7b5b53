#ifndef ZYL2_MOX2_STEP_H
#define ZYL2_MOX2_STEP_H

#include <Zyl2/Mox2/Attributes.h>

#include <string>

namespace Zyl2 {
namespace Mox2 {

/// A result step: a load step, a point in time, a mode.
///
/// Data that belongs to no step, such as the mesh, is given with a step of empty name.
struct Step
{
    /// A step without name and attributes.
    Step() : name(), attributes() {}

    /// \param stepName       name of the step; together with the dataset's name it must be unique
    ///                       on a node
    /// \param stepAttributes what else is known of the step, such as its time or frequency
    explicit Step(std::string const& stepName, Attributes const& stepAttributes = Attributes())
        : name(stepName), attributes(stepAttributes)
    {}

    /// Empty for data that belongs to no step.
    std::string name;
    /// Stored with each variable that is given for the step.
    Attributes attributes;
};

} // namespace Mox2
} // namespace Zyl2

#endif
