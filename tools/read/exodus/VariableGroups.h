#ifndef READ_EXODUS_VARIABLEGROUPS_H
#define READ_EXODUS_VARIABLEGROUPS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Exodus {

/// Variables that are the components of one result.
struct VariableGroup
{
    std::string name;
    /// Where each component is among the variables; one beyond the variables is always 0.
    std::vector<std::size_t> components;
    /// Endings of the variables' names; empty for a variable of its own.
    std::vector<std::string> componentNames;
};

/// Puts variables together whose names differ in their ending only. A file has but scalars, so that
/// names are all that tells of vectors and tensors:
///
/// - XX, XY, XZ, YX, YY, YZ, ZX, ZY and ZZ are a tensor,
/// - XX, YY, ZZ, XY, YZ and ZX (or XZ) are a symmetric tensor,
/// - X, Y and Z are a vector; in a file of two dimensions, X and Y are one, too.
///
/// All must be there, in upper or in lower case, with or without an underscore before them. A
/// single letter is no ending when the name before it ends in one of the three letters: SXX is no
/// component of a vector SX. A group stands where its first variable stands; its name is what comes
/// before the endings. All other variables are left as they are.
std::vector<VariableGroup> groupsOf(std::vector<std::string> const& variables,
                                    std::int64_t dimensionOfFile);

/// A group for one of the variables alone.
VariableGroup singleGroup(std::vector<std::string> const& variables, std::size_t index);

} // namespace Exodus

#endif
