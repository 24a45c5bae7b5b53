#include "ModelFiles.h"

#include <cmath>
#include <map>
#include <numeric>

namespace {

using Nodes = Model::Nodes;
using Reals = Model::Reals;

constexpr std::size_t oldMarksPerLine = 10;
constexpr float mark = -12345;
constexpr std::size_t spreadStart = 3;
constexpr std::size_t spreadIncrement = 5;
std::vector<std::size_t> const listedNumbers = {1, 4, 11};
/// Of the number in a file's name.
std::string const stars = "**";

Nodes allNodesOf(Model::Elements const& elements)
{
    Nodes all;
    for (Nodes const& nodes : elements.nodes)
        all.insert(all.end(), nodes.begin(), nodes.end());
    return all;
}

Reals component(Reals const& rows, std::size_t index, std::size_t components)
{
    Reals values;
    for (std::size_t i = index; i < rows.size(); i += components)
        values.push_back(rows[i]);
    return values;
}

void addComponents(Encoder& file, Reals const& rows, std::size_t components)
{
    for (std::size_t i = 0; i < components; ++i)
        file.reals(component(rows, i, components));
}

Reals withMarks(Reals values)
{
    for (float& value : values)
        if (std::isnan(value))
            value = mark;
    return values;
}

struct Defined
{
    std::vector<int> rows;
    Reals values;
};

Defined definedOf(Reals const& values, std::size_t components)
{
    Defined defined;
    for (std::size_t i = 0; i < values.size(); i += components) {
        if (std::isnan(values[i]))
            continue;
        defined.rows.push_back(static_cast<int>(i / components) + 1);
        defined.values.insert(defined.values.end(), &values[i], &values[i] + components);
    }
    return defined;
}

/// The coordinates along each axis of the part's edges from its first node.
void addAxes(Encoder& file, Model::Part const& part, Reals const& coordinates)
{
    std::size_t stride = 1;
    for (std::size_t axis = 0; axis < axisCount; ++axis) {
        auto const count = static_cast<std::size_t>(part.size[axis]);
        Reals values;
        for (std::size_t i = 0; i < count; ++i)
            values.push_back(coordinates[axisCount * stride * i + axis]);
        file.reals(values);
        stride *= count;
    }
}

/// A step in each direction is as long as its axis' number.
void addOriginAndSteps(Encoder& file, Reals const& coordinates)
{
    file.reals({coordinates[0], coordinates[1], coordinates[2]});
    file.reals({1, 2, 3});
}

std::vector<Reals> rowsOf(Reals const& coordinates)
{
    std::vector<Reals> rows;
    for (std::size_t i = 0; i < coordinates.size(); i += axisCount)
        rows.push_back({coordinates[i], coordinates[i + 1], coordinates[i + 2]});
    return rows;
}

std::string keywordOf(Model::Part const& part)
{
    return "block" + (part.kind.empty() ? "" : " " + part.kind) +
           (part.blankingMarks.empty() ? "" : " iblanked") +
           (part.ghostFlags.empty() ? "" : " with_ghost") + (part.hasRange ? " range" : "");
}

/// A complex variable has its parts in two files.
std::vector<Model::Variable> filesOf(Model::Variable const& variable)
{
    if (!variable.isComplex)
        return {variable};
    return variable.halves("Real", "Imaginary");
}

std::string kindOf(Model::Variable const& variable)
{
    static std::map<std::size_t, std::string> const kinds = {
        {1, "scalar"}, {3, "vector"}, {6, "tensor symm"}, {9, "tensor asym"}};
    return kinds.at(variable.components);
}

std::string timeOf(std::size_t step)
{
    return " " + std::to_string(step) + ".5";
}

} // namespace

std::filesystem::path ModelFiles::writeTo(Support::Folder const& folder) const
{
    writeSteps(folder, "mesh", model_.meshTimeSet, [this](std::size_t step) { return mesh(step); });
    for (Part const& part : model_.parts)
        if (part.isMeasured)
            writeSteps(folder, "points", model_.meshTimeSet,
                       [&](std::size_t step) { return measured(part, step); });
    for (Variable const& variable : model_.variables)
        for (Variable const& file : filesOf(variable))
            writeSteps(folder, file.name, file.timeSet,
                       [&](std::size_t step) { return values(file, step); });
    return folder.write("in.case", caseText());
}

bool ModelFiles::hasFilePerStep(std::size_t timeSet) const
{
    return model_.layout == Model::Layout::FilePerStep && timeSet > 0;
}

void ModelFiles::writeSteps(Support::Folder const& folder, std::string const& name,
                            std::size_t timeSet, Content const& contentOf) const
{
    std::vector<std::size_t> const& steps = model_.timeSets[timeSet];
    if (model_.layout == Model::Layout::StepsInOneFile) {
        folder.write(name, seriesOf(steps, contentOf));
    } else if (model_.layout == Model::Layout::StepsInTwoFiles) {
        folder.write(fileName(name, 0), seriesOf({steps.front()}, contentOf));
        folder.write(fileName(name, 1), seriesOf({steps.begin() + 1, steps.end()}, contentOf));
    } else if (!hasFilePerStep(timeSet))
        folder.write(name, contentOf(0).content());
    else
        for (std::size_t i = 0; i < steps.size(); ++i)
            folder.write(fileName(name, i), contentOf(steps[i]).content());
}

std::size_t ModelFiles::fileNumber(std::size_t index) const
{
    if (model_.numbering == Model::Numbering::Running)
        return index;
    return model_.numbering == Model::Numbering::Spread ? spreadStart + spreadIncrement * index
                                                        : listedNumbers.at(index);
}

std::string ModelFiles::fileName(std::string const& name, std::size_t index) const
{
    std::string const number = std::to_string(fileNumber(index));
    return name + std::string(stars.size() - number.size(), '0') + number;
}

std::string ModelFiles::caseText() const
{
    std::string text =
        std::string("FORMAT\ntype: ensight") + (model_.isGold ? " gold" : "") +
        "\nGEOMETRY\nmodel: " + sets(model_.meshTimeSet) + fileOf("mesh", model_.meshTimeSet) +
        (model_.stepOfElements ? " change_coords_only " + std::to_string(*model_.stepOfElements)
                               : "") +
        "\n";
    if (model_.parts.back().isMeasured)
        text +=
            "measured: " + sets(model_.meshTimeSet) + fileOf("points", model_.meshTimeSet) + "\n";
    text += "VARIABLE\n";
    for (Variable const& variable : model_.variables)
        text += caseLine(variable);
    for (Model::Constant const& constant : model_.constants)
        text += caseLine(constant);
    if (model_.layout != Model::Layout::OneStep)
        text += "TIME\n";
    for (std::size_t i = 1; i < model_.timeSets.size(); ++i)
        text += timeSection(i);
    if (model_.isSeries())
        text += "FILE\n";
    for (std::size_t i = 1; model_.isSeries() && i < model_.timeSets.size(); ++i)
        text += fileSection(i);
    return text;
}

std::string ModelFiles::fileSection(std::size_t timeSet) const
{
    std::size_t const count = model_.timeSets[timeSet].size();
    std::string const begin = "file set: " + std::to_string(timeSet) + "\n";
    if (model_.layout == Model::Layout::StepsInOneFile)
        return begin + "number of steps: " + std::to_string(count) + "\n";
    return begin + "filename index: " + std::to_string(fileNumber(0)) +
           "\nnumber of steps: 1\nfilename index: " + std::to_string(fileNumber(1)) +
           "\nnumber of steps: " + std::to_string(count - 1) + "\n";
}

std::string ModelFiles::caseLine(Model::Constant const& constant)
{
    std::string text = "constant per case: ";
    if (constant.timeSet > 0)
        text += std::to_string(constant.timeSet) + " ";
    text += constant.name;
    for (float const value : constant.values)
        text += " " + std::to_string(static_cast<int>(value)) + ".5";
    return text + "\n";
}

std::string ModelFiles::caseLine(Variable const& variable) const
{
    std::string text = (variable.isComplex ? "complex " : "") + kindOf(variable) + " per " +
                       (variable.isMeasured ? "measured " : "") +
                       (variable.isPerElement ? "element" : "node") + ": " +
                       sets(variable.timeSet) + variable.name;
    for (Variable const& file : filesOf(variable))
        text += " " + fileOf(file.name, file.timeSet);
    std::string const frequency = variable.isComplex ? " 50.0" : "";
    return text + frequency + "\n";
}

std::string ModelFiles::fileOf(std::string const& name, std::size_t timeSet) const
{
    bool const isNumbered =
        hasFilePerStep(timeSet) || model_.layout == Model::Layout::StepsInTwoFiles;
    return "\"" + name + (isNumbered ? stars : "") + "\"";
}

/// The numbers of the time set and of the file set.
std::string ModelFiles::sets(std::size_t timeSet) const
{
    std::string const number = timeSet == 0 ? "" : std::to_string(timeSet) + " ";
    return model_.isSeries() ? number + number : number;
}

std::string ModelFiles::timeSection(std::size_t timeSet) const
{
    std::vector<std::size_t> const& steps = model_.timeSets[timeSet];
    std::string text = "time set: " + std::to_string(timeSet) +
                       "\nnumber of steps: " + std::to_string(steps.size()) + "\n";
    if (hasFilePerStep(timeSet))
        text += numbering(steps.size());
    text += "time values:";
    for (std::size_t const step : steps)
        text += timeOf(step);
    return text + "\n";
}

std::string ModelFiles::numbering(std::size_t count) const
{
    using Numbering = Model::Numbering;
    std::string text = "filename numbers:";
    for (std::size_t i = 0; i < count; ++i)
        text += " " + std::to_string(fileNumber(i));
    if (model_.numbering == Numbering::Listed)
        return text + "\n";
    std::size_t const increment = model_.numbering == Numbering::Spread ? spreadIncrement : 1;
    return "filename start number: " + std::to_string(fileNumber(0)) +
           "\nfilename increment: " + std::to_string(increment) + "\n";
}

Encoder ModelFiles::mesh(std::size_t step) const
{
    Encoder file = empty();
    file.format();
    file.line("made by a test");
    file.line("at random");
    file.line("node id " + model_.nodeIds);
    file.line("element id " + model_.elementIds);
    if (model_.isGold)
        addExtents(file);
    else
        addSharedNodes(file, step);
    for (Part const& part : model_.parts) {
        if (part.isMeasured)
            continue;
        file.part(part.number);
        file.line(part.name);
        if (part.isStructured)
            addStructured(file, part, step);
        else
            addUnstructured(file, part, step);
    }
    return file;
}

/// What nobody needs.
void ModelFiles::addExtents(Encoder& file)
{
    file.line("extents");
    file.realsInLines({-1, 1, -1, 1, -1, 1}, 2);
}

Encoder ModelFiles::measured(Part const& part, std::size_t step) const
{
    Encoder file = emptyOfMeasured();
    file.format();
    file.line("made by a test");
    file.line("particle coordinates");
    file.integers({static_cast<int>(part.nodeCount)}, 1);
    file.rowsWithIds(nodeIdsOf(part.nodeCount), rowsOf(part.coordinates[step]));
    return file;
}

void ModelFiles::addSharedNodes(Encoder& file, std::size_t step) const
{
    Reals coordinates;
    for (Part const& part : model_.parts)
        if (model_.sharesNodesOf(part))
            coordinates = part.coordinates[step];
    std::vector<Reals> const rows = rowsOf(coordinates);
    file.line("coordinates");
    file.integers({static_cast<int>(rows.size())}, 1);
    if (model_.hasNodeIds())
        file.rowsWithIds(nodeIdsOf(rows.size()), rows);
    else
        file.realsInLines(coordinates, axisCount);
}

std::vector<int> ModelFiles::nodeIdsOf(std::size_t count) const
{
    std::vector<int> ids;
    for (std::size_t row = 0; row < count; ++row)
        ids.push_back(Model::nodeId(row, count));
    return ids;
}

std::vector<int> ModelFiles::elementIdsFrom(std::size_t first, std::size_t count)
{
    std::vector<int> ids;
    for (std::size_t row = 0; row < count; ++row)
        ids.push_back(Model::elementId(first + row));
    return ids;
}

void ModelFiles::addStructured(Encoder& file, Part const& part, std::size_t step) const
{
    constexpr int before = 2;
    file.line(keywordOf(part));
    std::vector<int> size(part.size.begin(), part.size.end());
    std::vector<int> range;
    for (int& count : size) {
        range.insert(range.end(), {before + 1, before + count});
        count += part.hasRange ? before + 1 : 0;
    }
    file.integers(size, axisCount);
    if (part.hasRange)
        file.integers(range, range.size());
    if (part.kind == "rectilinear")
        addAxes(file, part, part.coordinates[step]);
    else if (part.kind == "uniform")
        addOriginAndSteps(file, part.coordinates[step]);
    else
        addComponents(file, part.coordinates[step], axisCount);
    file.integers(part.blankingMarks, model_.isGold ? 1 : oldMarksPerLine);
    auto const add = [&](std::string const& keyword, std::vector<int> const& numbers) {
        file.line(keyword);
        file.integers(numbers, 1);
    };
    if (!part.ghostFlags.empty())
        add("ghost_flags", part.ghostFlags);
    if (part.hasIds && model_.hasNodeIds())
        add("node_ids", nodeIdsOf(part.nodeCount));
    if (part.hasIds && model_.hasElementIds())
        add("element_ids", elementIdsFrom(0, part.elementCount()));
}

void ModelFiles::addUnstructured(Encoder& file, Part const& part, std::size_t step) const
{
    if (model_.isGold) {
        file.line("coordinates");
        file.integers({static_cast<int>(part.nodeCount)}, 1);
        if (model_.hasNodeIds())
            file.integers(nodeIdsOf(part.nodeCount), 1);
        addComponents(file, part.coordinates[step], axisCount);
    }
    std::size_t first = 0;
    for (Elements const& elements : part.elements) {
        if (step == model_.stepOfElements.value_or(step))
            addElements(file, elements, first, part.nodeCount);
        first += elements.count();
    }
}

/// Before Gold, nodes are named by their ids, later by their places.
void ModelFiles::addElements(Encoder& file, Elements const& elements, std::size_t first,
                             std::size_t nodeCount) const
{
    file.line(elements.type);
    file.integers({static_cast<int>(elements.count())}, 1);
    Elements named = elements;
    for (Nodes& nodes : named.nodes)
        for (int& node : nodes)
            if (!model_.isGold && model_.nodeIds == "given")
                node = Model::nodeId(static_cast<std::size_t>(node - 1), nodeCount);
    bool const areIdsInRows = !model_.isGold && file.isText();
    std::vector<int> const ids = elementIdsFrom(first, elements.count());
    if (model_.hasElementIds() && !areIdsInRows)
        file.integers(ids, 1);
    if (model_.hasElementIds() && areIdsInRows)
        for (std::size_t i = 0; i < ids.size(); ++i)
            named.nodes[i].insert(named.nodes[i].begin(), ids[i]);
    std::vector<int> sizes;
    for (Nodes const& nodes : elements.nodes)
        sizes.push_back(static_cast<int>(nodes.size()));
    if (!elements.faces.empty())
        file.integers(elements.faces, 1);
    if (elements.type.find("nsided") != std::string::npos || !elements.faces.empty())
        file.integers(sizes, 1);
    if (!file.isText())
        return file.integers(allNodesOf(named), 1);
    for (Nodes const& nodes : named.nodes)
        file.integers(nodes, nodes.size());
}

Encoder ModelFiles::measuredValues(Variable const& variable, std::size_t step) const
{
    Encoder file = emptyOfMeasured();
    file.line(variable.name);
    file.reals(variable.values[step].back());
    return file;
}

Encoder ModelFiles::values(Variable const& variable, std::size_t step) const
{
    if (variable.isMeasured)
        return measuredValues(variable, step);
    Encoder file = empty();
    file.line(variable.name);
    std::vector<Reals> const& ofParts = variable.values[step];
    bool areSharedWritten = variable.isPerElement;
    for (std::size_t i = 0; i < model_.parts.size() && !areSharedWritten; ++i)
        if (model_.sharesNodesOf(model_.parts[i])) {
            file.reals(ofParts[i]);
            areSharedWritten = true;
        }
    for (std::size_t i = 0; i < model_.parts.size(); ++i) {
        bool const areShared = !variable.isPerElement && model_.sharesNodesOf(model_.parts[i]);
        if (!areShared && !ofParts[i].empty())
            addValues(file, variable, model_.parts[i], ofParts[i]);
    }
    return file;
}

void ModelFiles::addValues(Encoder& file, Variable const& variable, Part const& part,
                           Reals const& values) const
{
    file.part(part.number);
    if (part.isStructured)
        return addSection(file, variable, "block", values);
    if (!variable.isPerElement)
        return addSection(file, variable, "coordinates", values);
    auto from = values.begin();
    for (Elements const& elements : part.elements) {
        auto const to = from + static_cast<std::ptrdiff_t>(elements.count() * variable.components);
        addSection(file, variable, elements.type, {from, to});
        from = to;
    }
}

void ModelFiles::addSection(Encoder& file, Variable const& variable, std::string const& keyword,
                            Reals const& rows) const
{
    if (variable.gaps == Model::Gaps::Marked) {
        file.line(keyword + " undef");
        file.reals({mark});
        return addComponents(file, withMarks(rows), variable.components);
    }
    if (variable.gaps == Model::Gaps::LeftOut) {
        Defined const defined = definedOf(rows, variable.components);
        file.line(keyword + " partial");
        file.integers({static_cast<int>(defined.rows.size())}, 1);
        file.integers(defined.rows, 1);
        return addComponents(file, defined.values, variable.components);
    }
    file.line(keyword);
    if (model_.isGold || keyword == "block")
        return addComponents(file, rows, variable.components);
    file.reals(rows);
}

std::string ModelFiles::seriesOf(std::vector<std::size_t> const& steps,
                                 Content const& contentOf) const
{
    Encoder all = empty();
    for (std::size_t const step : steps) {
        Encoder const one = contentOf(step);
        if (step == steps.front())
            all.append(one.content().substr(0, one.formatLength()));
        all.line("BEGIN TIME STEP");
        all.append(one.content().substr(one.formatLength()));
        all.line("END TIME STEP");
    }
    return all.content();
}
