#ifndef READ_VTK_STEPNAME_H
#define READ_VTK_STEPNAME_H

#include <exchange/Attribute.h>

#include <filesystem>
#include <string>

namespace VtkRead {

/// The name of a step among what is said of it; empty if there is none.
std::string stepNameAmong(Exchange::AttributeList const& attributes);

/// What is said of a step besides its name.
Exchange::AttributeList withoutStepName(Exchange::AttributeList const& attributes,
                                        std::string const& name);

/// The name of the step that one of VTK's XML files holds, read without its mesh and its values:
/// that of the first piece or block, unless a file of blocks has one itself. Empty if there is no
/// name, or no mesh. Raises `Exchange::Error` when there is no such file.
std::string stepNameIn(std::filesystem::path const& file);

} // namespace VtkRead

#endif
