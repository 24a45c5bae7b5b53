#include "Listing.h"

#include "ValueText.h"

#include "moxread/NodeVisit.h"
#include "moxread/Text.h"

#include <algorithm>

namespace Mox {

using MoxRead::Attributes;
using MoxRead::Group;
using MoxRead::Material;
using MoxRead::Node;
using MoxRead::quoted;
using MoxRead::Variable;
using MoxRead::WritingRecord;

namespace {

// A tree may be as deep as it has nodes; lines that grow with the depth would make the listing of
// such a tree endless.
constexpr std::size_t greatestIndentedDepth = 64;

std::string indentFor(std::size_t depth)
{
    return std::string(2 * std::min(depth, greatestIndentedDepth), ' ');
}

void printAttributes(std::ostream& out, Attributes const& attributes, std::string const& indent)
{
    for (auto const& [name, value] : attributes) {
        out << indent << "attribute " << quoted(name) << " = " << textOf(value) << '\n';
    }
}

template <typename Numbers>
void printUnlessDefault(std::ostream& out, std::string const& what, Numbers const& numbers,
                        Numbers const& usual, std::string const& indent)
{
    if (numbers != usual)
        out << indent << what << ' ' << textOf(numbers.begin(), numbers.end()) << '\n';
}

void printGroup(std::ostream& out, Group const& group, std::string const& indent)
{
    printUnlessDefault(out, "translation", group.translation, {0, 0, 0}, indent);
    printUnlessDefault(out, "rotation", group.rotation, {0, 0, 1, 0}, indent);
    printUnlessDefault(out, "scale", group.scale, {1, 1, 1}, indent);
    if (group.flag)
        out << indent << "flag 1\n";
    printAttributes(out, group.attributes, indent);
}

void printMaterial(std::ostream& out, Material const& material, std::string const& indent)
{
    auto const color = [](MoxRead::Color const& value) {
        return textOf(value.begin(), value.end());
    };
    out << indent << "material: diffuse " << color(material.diffuse) << ", specular "
        << color(material.specular) << ", emissive " << color(material.emissive) << ", ambient "
        << color(material.ambient) << ", transparency " << textOf(material.transparency)
        << ", shininess " << textOf(material.shininess) << ", flag " << (material.flag ? 1 : 0)
        << '\n';
}

std::string nameOf(Variable const& variable)
{
    const std::string name = quoted(variable.datasetName());
    return variable.hasStep() ? name + " step " + quoted(variable.stepName()) : name;
}

} // namespace

Listing::Listing(ModelContents const& contents, std::string const* state)
    : contents_(contents), model_(contents.model()), state_(state)
{}

void Listing::print(std::ostream& out) const
{
    if (contents_.isWholeModel())
        printSummary(out);
    printTree(out);
    printSteps(out);
    if (contents_.isWholeModel() && contents_.hasValues())
        printHeavyData(out);
}

void Listing::printSummary(std::ostream& out) const
{
    if (state_ != nullptr)
        out << "incomplete: " << *state_ << '\n';
    out << "mox 1.3: ";
    if (state_ == nullptr)
        out << model_.blockCount() << " blocks, ";
    out << model_.nodes().size() << " nodes, " << model_.variableCount() << " datasets";
    if (state_ == nullptr)
        out << ", " << model_.bytes() << " bytes";
    out << '\n';
    printWritings(out, model_.globalInformation().writings);
    const std::size_t results = model_.globalInformation().resultAttributes.size();
    if (results > 0)
        out << "result attributes: " << results << " of 96 bytes\n";
}

void Listing::printTree(std::ostream& out) const
{
    MoxRead::visitNodes(model_, contents_.first(), [&](Node const& node, std::size_t depth) {
        printNode(out, node, indentFor(depth));
    });
}

void Listing::printNode(std::ostream& out, Node const& node, std::string const& indent) const
{
    const std::string inner = indent + "  ";
    out << indent << node.id << ' ' << (node.type.empty() ? "(no content)" : node.type) << ' '
        << quoted(node.name) << '\n';
    if (node.group() != nullptr)
        printGroup(out, *node.group(), inner);
    if (node.shape() != nullptr)
        printMaterial(out, node.shape()->material, inner);
    if (node.geometry() != nullptr)
        for (Variable const& variable : node.geometry()->variables)
            printVariable(out, variable, inner);
}

void Listing::printVariable(std::ostream& out, Variable const& variable,
                            std::string const& indent) const
{
    Variable const& stored = model_.resolve(variable);
    bool const isFloat = stored.elementType() == MoxRead::ElementType::Float;
    out << indent << "dataset " << nameOf(variable) << ": type " << variable.variableType() << ", "
        << (isFloat ? "float" : "uint32") << ", width " << unsigned{stored.width} << ", "
        << stored.rows() << " rows";
    if (contents_.hasValues())
        out << ", " << contents_.rangeOf(stored).text();
    if (variable.vibration)
        out << ", vibration";
    if (variable.linked) {
        out << ", link to node " << variable.link.nodeId << ' '
            << nameOf(model_.variable(variable.link));
    }
    out << '\n';
    printAttributes(out, variable.attributes, indent + "  ");
}

void Listing::printSteps(std::ostream& out) const
{
    for (StepUse const& step : contents_.steps()) {
        out << "step " << quoted(step.name) << ": " << step.datasets
            << (step.datasets == 1 ? " dataset" : " datasets");
        for (auto const& [name, value] : step.times)
            out << ", " << name << ' ' << textOf(value);
        out << '\n';
    }
}

void Listing::printHeavyData(std::ostream& out) const
{
    out << "heavy data: " << model_.heavyLength() << " bytes, " << model_.unusedHeavyLength()
        << " of them in no dataset\n";
}

void printWritings(std::ostream& out, std::vector<WritingRecord> const& writings)
{
    for (WritingRecord const& writing : writings) {
        out << "written " << quoted(writing.time) << " on host " << quoted(writing.host)
            << " by user " << quoted(writing.user) << ", format " << quoted(writing.formatVersion)
            << ", texts " << quoted(writing.text1) << ' ' << quoted(writing.text2) << ' '
            << quoted(writing.text) << '\n';
    }
}

} // namespace Mox
