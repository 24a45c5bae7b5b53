#include "EnSightModelFiles.h"

#include <cmath>
#include <map>
#include <numeric>

namespace {

using Nodes = EnSightModel::Nodes;
using Reals = EnSightModel::Reals;

constexpr std::size_t axisCount = 3;
constexpr std::size_t oldMarksPerLine = 10;
/// Other than what nodes and elements would be counted from.
constexpr int givenNodeId = 11;
constexpr int givenElementId = 101;
constexpr float mark = -12345;
constexpr std::size_t spreadStart = 3;
constexpr std::size_t spreadIncrement = 5;
std::vector<std::size_t> const listedNumbers = {1, 4, 11};
/// Of the number in a file's name.
std::string const stars = "**";

std::vector<int> idsFrom(int first, std::size_t count)
{
    std::vector<int> ids(count);
    std::iota(ids.begin(), ids.end(), first);
    return ids;
}

Nodes allNodesOf(EnSightModel::Elements const& elements)
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

void addComponents(EnSightEncoder& file, Reals const& rows, std::size_t components)
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
void addAxes(EnSightEncoder& file, EnSightModel::Part const& part, Reals const& coordinates)
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
void addOriginAndSteps(EnSightEncoder& file, Reals const& coordinates)
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

std::string keywordOf(EnSightModel::Part const& part)
{
    return "block" + (part.kind.empty() ? "" : " " + part.kind) +
           (part.blankingMarks.empty() ? "" : " iblanked");
}

/// A complex variable has its parts in two files.
std::vector<EnSightModel::Variable> filesOf(EnSightModel::Variable const& variable)
{
    if (!variable.isComplex)
        return {variable};
    return variable.halves("Real", "Imaginary");
}

std::string kindOf(EnSightModel::Variable const& variable)
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

std::filesystem::path EnSightModelFiles::writeTo(Support::Folder const& folder) const
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

bool EnSightModelFiles::isSeries() const
{
    return model_.layout == EnSightModel::Layout::SeveralStepsPerFile;
}

bool EnSightModelFiles::hasFilePerStep(std::size_t timeSet) const
{
    return model_.layout == EnSightModel::Layout::FilePerStep && timeSet > 0;
}

void EnSightModelFiles::writeSteps(Support::Folder const& folder, std::string const& name,
                                   std::size_t timeSet, Content const& contentOf) const
{
    std::vector<std::size_t> const& steps = model_.timeSets[timeSet];
    if (isSeries())
        folder.write(name, seriesOf(timeSet, contentOf).content());
    else if (!hasFilePerStep(timeSet))
        folder.write(name, contentOf(0).content());
    else
        for (std::size_t i = 0; i < steps.size(); ++i)
            folder.write(fileName(name, i), contentOf(steps[i]).content());
}

std::size_t EnSightModelFiles::fileNumber(std::size_t index) const
{
    if (model_.numbering == EnSightModel::Numbering::Running)
        return index;
    return model_.numbering == EnSightModel::Numbering::Spread
               ? spreadStart + spreadIncrement * index
               : listedNumbers.at(index);
}

std::string EnSightModelFiles::fileName(std::string const& name, std::size_t index) const
{
    std::string const number = std::to_string(fileNumber(index));
    return name + std::string(stars.size() - number.size(), '0') + number;
}

std::string EnSightModelFiles::caseText() const
{
    std::string text = std::string("FORMAT\ntype: ensight") + (model_.isGold ? " gold" : "") +
                       "\nGEOMETRY\nmodel: " + sets(model_.meshTimeSet) +
                       fileOf("mesh", model_.meshTimeSet) + "\n";
    if (model_.parts.back().isMeasured)
        text +=
            "measured: " + sets(model_.meshTimeSet) + fileOf("points", model_.meshTimeSet) + "\n";
    text += "VARIABLE\n";
    for (Variable const& variable : model_.variables)
        text += caseLine(variable);
    if (model_.layout != EnSightModel::Layout::OneStep)
        text += "TIME\n";
    for (std::size_t i = 1; i < model_.timeSets.size(); ++i)
        text += timeSection(i);
    if (isSeries())
        text += "FILE\n";
    for (std::size_t i = 1; isSeries() && i < model_.timeSets.size(); ++i)
        text += "file set: " + std::to_string(i) +
                "\nnumber of steps: " + std::to_string(model_.timeSets[i].size()) + "\n";
    return text;
}

std::string EnSightModelFiles::caseLine(Variable const& variable) const
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

std::string EnSightModelFiles::fileOf(std::string const& name, std::size_t timeSet) const
{
    return name + (hasFilePerStep(timeSet) ? stars : "");
}

/// The numbers of the time set and of the file set.
std::string EnSightModelFiles::sets(std::size_t timeSet) const
{
    std::string const number = timeSet == 0 ? "" : std::to_string(timeSet) + " ";
    return isSeries() ? number + number : number;
}

std::string EnSightModelFiles::timeSection(std::size_t timeSet) const
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

std::string EnSightModelFiles::numbering(std::size_t count) const
{
    using Numbering = EnSightModel::Numbering;
    std::string text = "filename numbers:";
    for (std::size_t i = 0; i < count; ++i)
        text += " " + std::to_string(fileNumber(i));
    if (model_.numbering == Numbering::Listed)
        return text + "\n";
    std::size_t const increment = model_.numbering == Numbering::Spread ? spreadIncrement : 1;
    return "filename start number: " + std::to_string(fileNumber(0)) +
           "\nfilename increment: " + std::to_string(increment) + "\n";
}

EnSightEncoder EnSightModelFiles::mesh(std::size_t step) const
{
    EnSightEncoder file = empty();
    file.format();
    file.line("made by a test");
    file.line("at random");
    file.line("node id " + model_.nodeIds);
    file.line("element id " + model_.elementIds);
    if (!model_.isGold)
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

EnSightEncoder EnSightModelFiles::measured(Part const& part, std::size_t step) const
{
    EnSightEncoder file = emptyOfMeasured();
    file.format();
    file.line("made by a test");
    file.line("particle coordinates");
    file.integers({static_cast<int>(part.nodeCount)}, 1);
    file.rowsWithIds(idsFrom(firstNodeId(), part.nodeCount), rowsOf(part.coordinates[step]));
    return file;
}

void EnSightModelFiles::addSharedNodes(EnSightEncoder& file, std::size_t step) const
{
    Reals coordinates;
    for (Part const& part : model_.parts)
        if (model_.sharesNodesOf(part))
            coordinates = part.coordinates[step];
    std::vector<Reals> const rows = rowsOf(coordinates);
    file.line("coordinates");
    file.integers({static_cast<int>(rows.size())}, 1);
    if (model_.hasNodeIds())
        file.rowsWithIds(idsFrom(firstNodeId(), rows.size()), rows);
    else
        file.realsInLines(coordinates, axisCount);
}

/// Ids that are to be ignored are not what elements name nodes by.
int EnSightModelFiles::firstNodeId() const
{
    return model_.nodeIds == "given" ? givenNodeId : 1;
}

void EnSightModelFiles::addStructured(EnSightEncoder& file, Part const& part,
                                      std::size_t step) const
{
    file.line(keywordOf(part));
    file.integers({part.size.begin(), part.size.end()}, axisCount);
    if (part.kind == "rectilinear")
        addAxes(file, part, part.coordinates[step]);
    else if (part.kind == "uniform")
        addOriginAndSteps(file, part.coordinates[step]);
    else
        addComponents(file, part.coordinates[step], axisCount);
    file.integers(part.blankingMarks, model_.isGold ? 1 : oldMarksPerLine);
}

void EnSightModelFiles::addUnstructured(EnSightEncoder& file, Part const& part,
                                        std::size_t step) const
{
    if (model_.isGold) {
        file.line("coordinates");
        file.integers({static_cast<int>(part.nodeCount)}, 1);
        if (model_.hasNodeIds())
            file.integers(idsFrom(firstNodeId(), part.nodeCount), 1);
        addComponents(file, part.coordinates[step], axisCount);
    }
    int id = givenElementId;
    for (Elements const& elements : part.elements) {
        addElements(file, elements, id);
        id += static_cast<int>(elements.nodes.size());
    }
}

void EnSightModelFiles::addElements(EnSightEncoder& file, Elements const& elements,
                                    int firstId) const
{
    std::size_t const count = elements.nodes.size();
    file.line(elements.type);
    file.integers({static_cast<int>(count)}, 1);
    bool const areIdsInRows = !model_.isGold && file.isText();
    if (model_.hasElementIds() && areIdsInRows)
        return addRowsWithIds(file, elements, firstId);
    if (model_.hasElementIds())
        file.integers(idsFrom(firstId, count), 1);
    addConnectivity(file, elements);
}

void EnSightModelFiles::addRowsWithIds(EnSightEncoder& file, Elements const& elements,
                                       int firstId) const
{
    for (Nodes const& nodes : elements.nodes) {
        Nodes row = {firstId++};
        for (int const node : nodes)
            row.push_back(node - 1 + firstNodeId());
        file.integers(row, row.size());
    }
}

/// Before Gold, nodes are named by their ids, later by their places.
void EnSightModelFiles::addConnectivity(EnSightEncoder& file, Elements const& elements) const
{
    int const first = model_.isGold ? 1 : firstNodeId();
    if (elements.type == "nsided") {
        std::vector<int> sizes;
        for (Nodes const& nodes : elements.nodes)
            sizes.push_back(static_cast<int>(nodes.size()));
        file.integers(sizes, 1);
    }
    Elements named = elements;
    for (Nodes& nodes : named.nodes)
        for (int& node : nodes)
            node += first - 1;
    if (!file.isText())
        return file.integers(allNodesOf(named), 1);
    for (Nodes const& nodes : named.nodes)
        file.integers(nodes, nodes.size());
}

EnSightEncoder EnSightModelFiles::measuredValues(Variable const& variable, std::size_t step) const
{
    EnSightEncoder file = emptyOfMeasured();
    file.line(variable.name);
    file.reals(variable.values[step].back());
    return file;
}

EnSightEncoder EnSightModelFiles::values(Variable const& variable, std::size_t step) const
{
    if (variable.isMeasured)
        return measuredValues(variable, step);
    EnSightEncoder file = empty();
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

void EnSightModelFiles::addValues(EnSightEncoder& file, Variable const& variable, Part const& part,
                                  Reals const& values) const
{
    file.part(part.number);
    if (part.isStructured)
        return addSection(file, variable, "block", values);
    if (!variable.isPerElement)
        return addSection(file, variable, "coordinates", values);
    auto from = values.begin();
    for (Elements const& elements : part.elements) {
        auto const to =
            from + static_cast<std::ptrdiff_t>(elements.nodes.size() * variable.components);
        addSection(file, variable, elements.type, {from, to});
        from = to;
    }
}

void EnSightModelFiles::addSection(EnSightEncoder& file, Variable const& variable,
                                   std::string const& keyword, Reals const& rows) const
{
    if (variable.gaps == EnSightModel::Gaps::Marked) {
        file.line(keyword + " undef");
        file.reals({mark});
        return addComponents(file, withMarks(rows), variable.components);
    }
    if (variable.gaps == EnSightModel::Gaps::LeftOut) {
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

EnSightEncoder EnSightModelFiles::seriesOf(std::size_t timeSet, Content const& contentOf) const
{
    EnSightEncoder all = empty();
    for (std::size_t const step : model_.timeSets[timeSet]) {
        EnSightEncoder const one = contentOf(step);
        if (step == 0)
            all.append(one.content().substr(0, one.formatLength()));
        all.line("BEGIN TIME STEP");
        all.append(one.content().substr(one.formatLength()));
        all.line("END TIME STEP");
    }
    return all;
}
