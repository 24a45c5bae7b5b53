#include "EnSightFaults.h"

#include <exchange/Error.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace VtkRead::EnSightFaults {

namespace {

using DataFile = EnSightCase::DataFile;
using Format = EnSightFile::Format;

bool isStructured(EnSightMesh::Part const& part)
{
    return part.elements.count("block") > 0;
}

/// Of what can't be opened, the reader says so.
bool beginsWithStep(std::filesystem::path const& path, Format format, bool isMesh)
{
    try {
        EnSightFile file(path, format);
        if (isMesh && !file.isText())
            file.description();
        return EnSightFile::beginsStep(file.description());
    } catch (EnSightFile::Unknown const&) {
        return true;
    }
}

/// With a FILE section the reader searches the beginning of a step in all files, whether or not
/// they belong to a file set, and without looking for their end.
void requireSteps(std::vector<DataFile> const& files, Format format, bool isMesh)
{
    for (DataFile const& file : files)
        if (!beginsWithStep(file.path, format, isMesh))
            throw Exchange::Error("The case has a FILE section, but the file '" +
                                  file.path.string() +
                                  "' does not begin with a step, which VTK can't read.");
}

void requireFileSet(EnSightCase::Variable const& variable)
{
    if (!variable.hasFileSet)
        throw Exchange::Error("The case has a FILE section, but the variable '" + variable.name +
                              "' has no file set, which VTK can't read.");
}

void requireReadableMeasured(EnSightCase const& description, Format format)
{
    if (!description.isGold())
        throw Exchange::Error("VTK misreads measured points of EnSight 6.");
    if (format == Format::Fortran)
        throw Exchange::Error("VTK misreads measured points in Fortran binary files.");
    if (format == Format::C && description.hasFileSets())
        throw Exchange::Error("VTK can't read measured points in binary files with several steps "
                              "in a file.");
}

/// The reader looks up the sets of a complex variable among those of the others.
bool areSetsOfComplexFound(EnSightCase const& description)
{
    std::vector<EnSightCase::Variable> const& variables = description.variables();
    auto const complexFiles = std::count_if(variables.begin(), variables.end(),
                                            [](auto const& each) { return each.isComplex; });
    if (complexFiles == 0 || !description.hasTimeSets())
        return true;
    auto const others = static_cast<std::ptrdiff_t>(variables.size()) - complexFiles;
    return others >= complexFiles / 2 &&
           std::all_of(variables.begin(), variables.end(),
                       [&](auto const& each) { return each.sets == variables.front().sets; });
}

/// The reader takes ids for rows in them.
void requireNoTetrahedra(EnSightMesh::Part const& part)
{
    for (char const* const type : {"tetra4", "tetra10"})
        if (part.elements.count(type) > 0)
            throw Exchange::Error(std::string("VTK misreads the nodes of '") + type +
                                  "' elements in binary files of EnSight 6 with node ids.");
}

/// The reader takes the marks behind the first line for those of other nodes.
void requireOneLineOfMarks(EnSightMesh::Part const& part)
{
    constexpr std::uint64_t marksPerLine = 10;
    if (part.nodes > marksPerLine)
        throw Exchange::Error("Part " + std::to_string(part.number) +
                              " is a blanked block of more than " + std::to_string(marksPerLine) +
                              " nodes, which VTK misreads in texts of EnSight 6.");
}

/// In texts, the reader loses the structured parts behind the first one, and of values per element
/// all parts behind it; in binary files it loses structured parts behind shared nodes.
bool isMisread(EnSightCase::Variable const& variable, EnSightMesh const& mesh, Format format)
{
    if (variable.components > 1)
        return true;
    if (format != Format::Text)
        return !variable.isPerElement && mesh.sharedNodes > 0;
    return std::count_if(mesh.parts.begin(), mesh.parts.end(), isStructured) > 1 ||
           (variable.isPerElement && !isStructured(mesh.parts.back()));
}

[[noreturn]] void refuse(EnSightCase::Variable const& variable, std::string const& what)
{
    throw Exchange::Error("The variable '" + variable.name + "' has " + what +
                          ", which VTK misreads in this format.");
}

void tellOfLostNodes(EnSightMesh const& mesh, Exchange::Report& report)
{
    std::map<std::string, std::uint64_t> counts;
    for (EnSightMesh::Part const& part : mesh.parts)
        for (auto const& [type, count] : part.elements)
            if (EnSightMesh::hasMidSideNodes(type))
                counts[type] += count;
    for (auto const& [type, count] : counts)
        report.warn("VTK leaves out the mid-side nodes of " + std::to_string(count) + " '" + type +
                    "' elements of EnSight 6.");
}

/// Of binary files, the reader says so.
void tellOfBlanks(EnSightMesh const& mesh, Format format, Exchange::Report& report)
{
    for (EnSightMesh::Part const& part : mesh.parts)
        if (format == Format::Text && part.isBlanked && !part.kind.empty())
            report.warn("VTK does not leave out what is blanked in part " +
                        std::to_string(part.number) + ".");
}

} // namespace

void requireReadable(EnSightCase const& description, Format format)
{
    if (format == Format::Fortran && !description.isGold())
        throw Exchange::Error("VTK can't read Fortran binary files of EnSight 6.");
    if (!description.measured().empty())
        requireReadableMeasured(description, format);
    if (!areSetsOfComplexFound(description))
        throw Exchange::Error("VTK misreads complex variables of a case with a TIME section, "
                              "unless as many others have the same time set and file set.");
    if (!description.hasFileSets())
        return;
    if (format == Format::Fortran)
        throw Exchange::Error("VTK can't read Fortran binary files with several steps in a file.");
    // The reader does not see the end of a step, and looks for another part or block of elements in
    // each 80 bytes behind it: by chance, it finds those of a later step.
    if (format == Format::C && !description.isGold())
        throw Exchange::Error("VTK can't read binary files of EnSight 6 with several steps in a "
                              "file.");
    requireSteps(description.meshes(), format, true);
    requireSteps(description.measured(), format, true);
    for (EnSightCase::Variable const& variable : description.variables()) {
        requireFileSet(variable);
        requireSteps(variable.files, format, false);
    }
}

void requireReadable(EnSightMesh const& mesh, Format format)
{
    bool const arePointsMisread =
        mesh.isGold && format == Format::Text && mesh.hasNodeIds && !mesh.hasElementIds;
    for (EnSightMesh::Part const& part : mesh.parts) {
        if (part.isBlanked && part.kind == "curvilinear")
            throw Exchange::Error("Part " + std::to_string(part.number) +
                                  " is a blanked curvilinear block, which VTK misreads.");
        if (part.isBlanked && !mesh.isGold && format == Format::Text)
            requireOneLineOfMarks(part);
        if (mesh.hasOwnNodeIds)
            requireNoTetrahedra(part);
        if (arePointsMisread && part.elements.count("point") > 0)
            throw Exchange::Error("VTK misreads 'point' elements without ids in texts with node "
                                  "ids.");
    }
}

void requireReadable(EnSightCase::Variable const& variable, EnSightMesh const& mesh, Format format)
{
    bool const hasStructured = std::any_of(mesh.parts.begin(), mesh.parts.end(), isStructured);
    if (!mesh.isGold && hasStructured && isMisread(variable, mesh, format))
        refuse(variable, "values on structured parts");
}

void requireReadable(EnSightCase const& description, EnSightCase::Variable const& variable,
                     EnSightVariableWalker const& values, EnSightFile const& file)
{
    bool const isTextPerElement = file.isText() && variable.isPerElement;
    if (isTextPerElement && variable.components > 1 && values.types().count("block") > 0)
        refuse(variable, "values on structured parts");
    if (isTextPerElement && description.hasSeveralSteps() && values.types().count("penta15") > 0)
        refuse(variable, "values of 'penta15' elements in several steps");
    if (!file.isText() && file.isSeries() && values.hasUndefined())
        refuse(variable, "undefined values and several steps in a file");
}

void tellOfLosses(EnSightCase const& description, Exchange::Report& report)
{
    for (std::string const& name : description.constants())
        report.warn("VTK leaves out the constant '" + name + "' of the case.");
}

void tellOfLosses(EnSightMesh const& mesh, Format format, Exchange::Report& report)
{
    if (mesh.isGold)
        tellOfBlanks(mesh, format, report);
    else
        tellOfLostNodes(mesh, report);
}

} // namespace VtkRead::EnSightFaults
