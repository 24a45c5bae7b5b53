#include "RandomCase.h"

#include <read/ensight/Topology.h>

#include <algorithm>
#include <limits>
#include <numeric>

namespace {

using Steps = std::vector<std::size_t>;
using Types = std::vector<std::string>;

/// Of an unstructured part; enough for each type of element.
constexpr std::size_t fewestNodes = 20;
constexpr std::size_t mostNodes = 40;

std::vector<Types> const& linearFamilies()
{
    static std::vector<Types> const families = {
        {"hexa8", "tetra4", "pyramid5", "penta6"}, {"quad4", "tria3"}, {"bar2"}, {"point"}};
    return families;
}

std::vector<Types> const& secondOrderFamilies()
{
    static std::vector<Types> const families = {
        {"hexa20", "tetra10", "pyramid13", "penta15", "hexa8"},
        {"quad8", "tria6", "quad4", "tria3"},
        {"bar3", "bar2"}};
    return families;
}

std::vector<int> runningNumbers(std::size_t count)
{
    std::vector<int> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 1);
    return numbers;
}

} // namespace

RandomCase::RandomCase(Model::Format format, bool isGold, std::uint32_t seed) : picks_(seed)
{
    model_.format = format;
    model_.isGold = isGold;
    model_.isBigEndian = picks_.chance(50);
    makeSteps();
    makeIds();
    makeParts();
    makeVariable("variableA");
    if (picks_.chance(50))
        makeVariable("variableB");
    if (picks_.chance(20))
        makeVariable("variableC");
    if (picks_.chance(20))
        makeMeasured();
    makeConstants();
}

void RandomCase::makeSteps()
{
    using Layout = Model::Layout;
    using Numbering = Model::Numbering;
    model_.layout = picks_.oneOf<Layout>(
        {Layout::OneStep, Layout::FilePerStep, Layout::StepsInOneFile, Layout::StepsInTwoFiles});
    if (model_.layout == Layout::OneStep)
        return;
    model_.stepCount = 2 + picks_.below(2);
    model_.timeSets.push_back(model_.stepCount == 2 ? Steps{0, 1} : Steps{0, 1, 2});
    model_.numbering =
        picks_.oneOf<Numbering>({Numbering::Running, Numbering::Spread, Numbering::Listed});
    model_.isMeshMoving = picks_.chance(40);
    model_.meshTimeSet = model_.isMeshMoving || model_.isSeries() ? 1 : 0;
    if (model_.meshTimeSet == 1 && picks_.chance(30))
        model_.stepOfElements = picks_.below(model_.stepCount);
    bool const mayHaveOne = model_.layout != Layout::StepsInTwoFiles;
    if (picks_.chance(30))
        model_.timeSets.push_back(
            model_.stepCount == 2 && mayHaveOne ? Steps{0} : Steps{0, model_.stepCount - 1});
}

void RandomCase::makeIds()
{
    std::vector<std::string> const modes = {"off", "given", "assign", "ignore"};
    model_.nodeIds = picks_.oneOf(modes);
    model_.elementIds = picks_.oneOf(modes);
}

void RandomCase::makeParts()
{
    constexpr std::size_t mostParts = 3;
    sharedNodes_ = fewestNodes + picks_.below(mostNodes - fewestNodes + 1);
    for (std::size_t step = 0; step < model_.stepCount; ++step)
        sharedCoordinates_.push_back(reals(sharedNodes_ * axisCount));
    std::size_t const count = 1 + picks_.below(mostParts);
    auto const percentStructured = picks_.oneOf<std::size_t>({0, 50, 100});
    bool const skipsNumbers = model_.isGold && picks_.chance(15);
    for (std::size_t i = 0; i < count; ++i) {
        int const number = static_cast<int>(skipsNumbers ? 2 * i + 3 : i + 1);
        model_.parts.push_back(part(number, picks_.chance(percentStructured)));
    }
}

Model::Part RandomCase::part(int number, bool isStructured)
{
    Part part;
    part.number = number;
    part.name = "Part number " + std::to_string(number);
    part.isStructured = isStructured;
    if (isStructured)
        makeStructured(part);
    else
        makeUnstructured(part);
    for (std::size_t step = 0; step < model_.stepCount; ++step)
        part.coordinates.push_back(step == 0 || model_.isMeshMoving ? coordinatesOf(part, step)
                                                                    : part.coordinates.front());
    return part;
}

void RandomCase::makeStructured(Part& part)
{
    for (int& count : part.size)
        count = 1 + static_cast<int>(picks_.below(3));
    part.size[1] = std::max(part.size[1], 2);
    part.nodeCount = static_cast<std::size_t>(part.size[0] * part.size[1] * part.size[2]);
    if (model_.isGold)
        part.kind = picks_.oneOf<std::string>({"", "curvilinear", "rectilinear", "uniform"});
    if (picks_.chance(20))
        part.blankingMarks = marks(part.nodeCount, 1, 0);
    if (model_.isGold && picks_.chance(20))
        part.ghostFlags = marks(part.elementCount(), 0, 1);
    part.hasRange = model_.isGold && picks_.chance(20);
    part.hasIds = model_.isGold && picks_.chance(50);
}

Model::Nodes RandomCase::marks(std::size_t count, int usual, int other)
{
    Model::Nodes marks;
    for (std::size_t i = 0; i < count; ++i)
        marks.push_back(picks_.chance(10) ? other : usual);
    return marks;
}

Model::Reals RandomCase::coordinatesOf(Part const& part, std::size_t step)
{
    if (model_.sharesNodesOf(part))
        return sharedCoordinates_[step];
    return part.isStructured ? gridCoordinates(part) : reals(part.nodeCount * axisCount);
}

Model::Reals RandomCase::gridCoordinates(Part const& part)
{
    if (part.kind == "rectilinear" || part.kind == "uniform")
        return lattice(axesOf(part));
    return reals(part.nodeCount * axisCount);
}

std::array<Model::Reals, 3> RandomCase::axesOf(Part const& part)
{
    std::array<Reals, 3> axes;
    for (std::size_t i = 0; i < axisCount; ++i) {
        axes[i] = reals(static_cast<std::size_t>(part.size[i]));
        if (part.kind == "uniform")
            for (std::size_t node = 1; node < axes[i].size(); ++node)
                axes[i][node] = axes[i][node - 1] + static_cast<float>(i + 1);
    }
    return axes;
}

Model::Reals RandomCase::lattice(std::array<Reals, 3> const& axes)
{
    Reals rows;
    for (float const z : axes[2])
        for (float const y : axes[1])
            for (float const x : axes[0])
                rows.insert(rows.end(), {x, y, z});
    return rows;
}

void RandomCase::makeUnstructured(Part& part)
{
    part.nodeCount =
        model_.isGold ? fewestNodes + picks_.below(mostNodes - fewestNodes + 1) : sharedNodes_;
    std::vector<Types> families = linearFamilies();
    families.insert(families.end(), secondOrderFamilies().begin(), secondOrderFamilies().end());
    if (model_.isGold) {
        families.push_back({"nsided", "tria3", "g_tria3", "g_nsided"});
        families.push_back({"nfaced", "hexa8", "g_hexa8", "g_nfaced", "g_penta15"});
    }
    Types types = picks_.oneOf(families);
    picks_.shuffle(types);
    types.resize(1 + picks_.below(types.size()));
    for (std::string const& type : types)
        part.elements.push_back(elements(type, part.nodeCount));
}

Model::Elements RandomCase::elements(std::string const& type, std::size_t nodesOfPart)
{
    constexpr std::size_t mostElements = 4;
    constexpr std::size_t fewestOfPolygon = 3;
    constexpr std::size_t mostOfPolygon = 9;
    constexpr int fewestFaces = 4;
    Model::Elements result{type, {}, {}};
    std::size_t const size = EnSight::topologyOf(type)->nodeCount;
    std::size_t count = picks_.chance(5) ? 0 : 1 + picks_.below(mostElements);
    if (result.arePolyhedra()) {
        for (std::size_t i = 0; i < count; ++i)
            result.faces.push_back(fewestFaces + static_cast<int>(picks_.below(3)));
        count =
            static_cast<std::size_t>(std::accumulate(result.faces.begin(), result.faces.end(), 0));
    }
    for (std::size_t i = 0; i < count; ++i)
        result.nodes.push_back(nodes(
            size > 0 ? size : fewestOfPolygon + picks_.below(mostOfPolygon - fewestOfPolygon + 1),
            nodesOfPart));
    return result;
}

Model::Nodes RandomCase::nodes(std::size_t count, std::size_t nodesOfPart)
{
    Model::Nodes nodes = runningNumbers(nodesOfPart);
    picks_.shuffle(nodes);
    nodes.resize(count);
    return nodes;
}

void RandomCase::makeVariable(std::string const& name)
{
    using Gaps = Model::Gaps;
    Variable variable;
    variable.name = name;
    variable.components = picks_.oneOf<std::size_t>(
        model_.isGold ? std::vector<std::size_t>{1, 3, 6, 9} : std::vector<std::size_t>{1, 3, 6});
    variable.isComplex = variable.components <= axisCount && picks_.chance(20);
    variable.isPerElement = picks_.chance(50);
    if (model_.isGold)
        variable.gaps =
            picks_.oneOf<Gaps>({Gaps::None, Gaps::None, Gaps::None, Gaps::Marked, Gaps::LeftOut});
    variable.timeSet = timeSet();
    Steps const& changes = model_.timeSets[variable.timeSet];
    std::vector<bool> const haveValues = partsWithValues(variable);
    bool const isConstant = variable.timeSet == 0;
    std::vector<Reals> const none(model_.parts.size());
    for (std::size_t step = 0; step < model_.stepCount; ++step) {
        bool const isNew = std::find(changes.begin(), changes.end(), step) != changes.end();
        if (isNew)
            variable.values.push_back(valuesOfParts(variable, haveValues));
        else
            variable.values.push_back(isConstant ? variable.values.back() : none);
    }
    model_.variables.push_back(variable);
}

std::size_t RandomCase::timeSet()
{
    bool const mayBeConstant = model_.layout == Model::Layout::FilePerStep;
    if (mayBeConstant && picks_.chance(15))
        return 0;
    std::size_t const last = model_.timeSets.size() - 1;
    return last == 0 ? 0 : 1 + picks_.below(last);
}

std::vector<Model::Reals> RandomCase::valuesOfParts(Variable const& variable,
                                                    std::vector<bool> const& haveValues)
{
    std::vector<Reals> values;
    for (std::size_t i = 0; i < model_.parts.size(); ++i)
        values.push_back(haveValues[i] ? valuesOf(variable, model_.parts[i]) : Reals());
    if (!variable.isPerElement)
        shareValues(values);
    return values;
}

std::vector<bool> RandomCase::partsWithValues(Variable const& variable)
{
    bool const isOfAll = picks_.chance(85);
    std::vector<bool> haveValues;
    for (Part const& part : model_.parts) {
        bool const isPicked = picks_.chance(50);
        bool const isShared = !variable.isPerElement && model_.sharesNodesOf(part);
        haveValues.push_back(isOfAll || isPicked || isShared);
    }
    // A file without any values has lost them.
    auto const rows = [&](Part const& part) {
        return variable.isPerElement ? part.elementCount() : part.nodeCount;
    };
    for (std::size_t i = 0; i < haveValues.size(); ++i)
        if (rows(model_.parts[i]) > 0) {
            haveValues[i] = true;
            break;
        }
    return haveValues;
}

void RandomCase::makeConstants()
{
    if (picks_.chance(30))
        model_.constants.push_back({"always", 0, reals(1)});
    if (model_.timeSets.size() > 1 && picks_.chance(30))
        model_.constants.push_back(
            {"changing", model_.timeSets.size() - 1, reals(model_.timeSets.back().size())});
    for (Model::Constant& constant : model_.constants)
        for (float& value : constant.values)
            value += value < 0 ? -.5F : .5F;
}

/// A part behind the others, and a variable of its own.
void RandomCase::makeMeasured()
{
    Part part;
    part.number = static_cast<int>(model_.parts.size()) + 1;
    part.name = "Measured points";
    part.isMeasured = true;
    part.nodeCount = 2 + picks_.below(mostNodes);
    Variable variable;
    variable.name = "measured";
    variable.components = picks_.oneOf<std::size_t>({1, 3});
    variable.isMeasured = true;
    variable.timeSet = model_.timeSets.size() == 1 ? 0 : 1;
    for (std::size_t step = 0; step < model_.stepCount; ++step) {
        part.coordinates.push_back(step == 0 || model_.isMeshMoving
                                       ? reals(part.nodeCount * axisCount)
                                       : part.coordinates.front());
        variable.values.emplace_back(model_.parts.size());
        variable.values.back().push_back(reals(part.nodeCount * variable.components));
        for (Variable& other : model_.variables)
            other.values[step].emplace_back();
    }
    model_.parts.push_back(part);
    model_.variables.push_back(variable);
}

Model::Reals RandomCase::valuesOf(Variable const& variable, Part const& part)
{
    std::size_t const rows = variable.isPerElement ? part.elementCount() : part.nodeCount;
    Reals values = reals(rows * variable.columns());
    if (variable.gaps != Model::Gaps::None)
        makeGaps(variable, values);
    return values;
}

void RandomCase::makeGaps(Variable const& variable, Reals& values)
{
    for (std::size_t row = 0; row < values.size(); row += variable.columns())
        if (picks_.chance(40))
            std::fill_n(values.begin() + static_cast<std::ptrdiff_t>(row), variable.columns(),
                        std::numeric_limits<float>::quiet_NaN());
}

/// Nodes that are shared have one value each.
void RandomCase::shareValues(std::vector<Reals>& values) const
{
    Reals const* first = nullptr;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!model_.sharesNodesOf(model_.parts[i]))
            continue;
        if (first == nullptr)
            first = &values[i];
        values[i] = *first;
    }
}

Model::Reals RandomCase::reals(std::size_t count)
{
    Reals values;
    for (std::size_t i = 0; i < count; ++i)
        values.push_back(real());
    return values;
}

/// Of so few digits that a text holds it. Negative ones touch what is in front of them.
float RandomCase::real()
{
    ++latestReal_;
    constexpr int everyOther = 3;
    return static_cast<float>(latestReal_ % everyOther == 0 ? -latestReal_ : latestReal_);
}
