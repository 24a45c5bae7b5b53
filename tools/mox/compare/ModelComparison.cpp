#include "ModelComparison.h"

#include "NameMatching.h"
#include "mox/print/ComponentNames.h"
#include "mox/print/FileError.h"
#include "mox/print/StepUse.h"
#include "mox/print/ValueText.h"

#include "moxread/NodePath.h"
#include "moxread/NodeVisit.h"
#include "moxread/Text.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>

namespace Mox {

using MoxRead::Model;
using MoxRead::Node;
using MoxRead::Variable;

namespace {

// Paths of deeper nodes would make the answer grow with the square of the depth.
constexpr std::size_t greatestPathDepth = 64;

MoxRead::Model opened(std::string const& path, MoxRead::ReadOptions const& options)
{
    std::optional<Model> model;
    inFile(path, [&] { model.emplace(path, options); });
    return std::move(*model);
}

std::string pathOf(Model const& model, Node const& node)
{
    std::size_t depth = 0;
    for (Node const* above = &node; above->parent != 0; above = &model.node(above->parent))
        if (++depth > greatestPathDepth)
            return "#" + std::to_string(node.id);
    return MoxRead::NodePath::of(model, node);
}

Difference differenceOf(std::string const& kind, Model const& model, Node const& node)
{
    Difference difference;
    difference.kind = kind;
    difference.path = pathOf(model, node);
    return difference;
}

Difference differenceOf(std::string const& kind, Model const& model, Node const& node,
                        Variable const& variable)
{
    Difference difference = differenceOf(kind, model, MoxRead::ownerOf(model, node));
    difference.dataset = variable.datasetName();
    if (variable.hasStep())
        difference.step = variable.stepName();
    return difference;
}

std::vector<Node const*> childrenOf(Model const& model, Node const& node)
{
    std::vector<Node const*> children;
    for (std::uint32_t id = node.firstChild; id != 0; id = model.node(id).nextSibling)
        children.push_back(&model.node(id));
    return children;
}

std::string const& nameOf(Node const* node)
{
    return node->name;
}

template <typename Named>
std::string const& nameOf(Named const& named)
{
    return named.name;
}

template <typename Named>
std::vector<std::string> namesOf(std::vector<Named> const& all)
{
    std::vector<std::string> names;
    names.reserve(all.size());
    for (Named const& named : all)
        names.push_back(nameOf(named));
    return names;
}

std::string typeText(Node const& node)
{
    return node.type.empty() ? "no content" : node.type;
}

std::string subtreeText(Model const& model, Node const& node)
{
    std::size_t count = 0;
    MoxRead::visitNodes(model, node, [&](Node const&, std::size_t) { ++count; });
    std::string const text = typeText(node);
    return count == 1 ? text : text + " with " + std::to_string(count - 1) + " below";
}

std::string shapeText(Model const& model, Variable const& variable)
{
    Variable const& stored = model.resolve(variable);
    bool const isFloat = stored.elementType() == MoxRead::ElementType::Float;
    return "type " + std::to_string(variable.variableType()) + ", " +
           (isFloat ? "float" : "uint32") + ", width " + std::to_string(stored.width) + ", " +
           std::to_string(stored.rows()) + " rows";
}

std::string counted(std::size_t count, std::string const& what)
{
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

} // namespace

NamedModel::NamedModel(std::string file, MoxRead::ReadOptions const& options)
    : path(std::move(file)), model(opened(path, options))
{}

ModelComparison::ModelComparison(NamedModel& left, NamedModel& right, Tolerance const& tolerance,
                                 Common::Progress& progress)
    : left_(left), right_(right), tolerance_(tolerance)
{
    compareFiles();
    compareSteps();
    compareTrees();
    compareValues(progress);
}

void ModelComparison::compareFiles()
{
    auto const& left = left_.model.globalInformation().resultAttributes;
    auto const& right = right_.model.globalInformation().resultAttributes;
    if (left == right)
        return;
    Difference difference;
    difference.kind = "result attributes";
    add(difference, counted(left.size(), "record"), counted(right.size(), "record"));
}

void ModelComparison::compareSteps()
{
    std::vector<StepUse> const left = stepsOf(left_.model, left_.model.node(1));
    std::vector<StepUse> const right = stepsOf(right_.model, right_.model.node(1));
    NameMatching const matching(namesOf(left), namesOf(right));
    auto const addStep = [this](bool isLeft, StepUse const& step) {
        Difference difference;
        difference.kind = "step";
        difference.step = step.name;
        addOnly(isLeft, difference, counted(step.datasets, "dataset"));
    };
    for (std::size_t const place : matching.onlyLeft)
        addStep(true, left[place]);
    for (std::size_t const place : matching.onlyRight)
        addStep(false, right[place]);
    if (matching.isInOrder())
        return;
    Difference difference;
    difference.kind = "order of steps";
    add(difference, "one order", "another");
}

void ModelComparison::compareTrees()
{
    Node const& left = left_.model.node(1);
    Node const& right = right_.model.node(1);
    if (left.name != right.name)
        add(differenceOf("name", left_.model, left), MoxRead::quoted(left.name),
            MoxRead::quoted(right.name));
    toCompare_ = {{&left, &right}};
    while (!toCompare_.empty()) {
        auto const [leftNode, rightNode] = toCompare_.back();
        toCompare_.pop_back();
        compareNodes(*leftNode, *rightNode);
    }
}

void ModelComparison::compareNodes(Node const& left, Node const& right)
{
    if (left.type != right.type)
        add(differenceOf("type", left_.model, left), typeText(left), typeText(right));
    else
        compareContents(left, right);
    matchChildren(left, right);
}

void ModelComparison::matchChildren(Node const& left, Node const& right)
{
    std::vector<Node const*> const leftChildren = childrenOf(left_.model, left);
    std::vector<Node const*> const rightChildren = childrenOf(right_.model, right);
    NameMatching const matching(namesOf(leftChildren), namesOf(rightChildren));
    for (std::size_t const place : matching.onlyLeft)
        addOnly(true, differenceOf("node", left_.model, *leftChildren[place]),
                subtreeText(left_.model, *leftChildren[place]));
    for (std::size_t const place : matching.onlyRight)
        addOnly(false, differenceOf("node", right_.model, *rightChildren[place]),
                subtreeText(right_.model, *rightChildren[place]));
    if (!matching.isInOrder())
        add(differenceOf("order of children", left_.model, left), "one order", "another");
    // The next to be compared is the last of the list.
    std::for_each(matching.pairs.rbegin(), matching.pairs.rend(), [&](auto const& pair) {
        toCompare_.emplace_back(leftChildren[pair.first], rightChildren[pair.second]);
    });
}

void ModelComparison::compareContents(Node const& left, Node const& right)
{
    if (left.group() != nullptr)
        compareGroups(left, right);
    if (left.shape() != nullptr)
        compareMaterials(left, right);
    if (left.geometry() != nullptr)
        compareDatasetLists(left, right);
}

void ModelComparison::compareGroups(Node const& left, Node const& right)
{
    MoxRead::Group const& one = *left.group();
    MoxRead::Group const& other = *right.group();
    Difference const transform = differenceOf("transform", left_.model, left);
    compareNumbers(transform, "translation", one.translation, other.translation);
    compareNumbers(transform, "rotation", one.rotation, other.rotation);
    compareNumbers(transform, "scale", one.scale, other.scale);
    compareFlags(transform, "flag", one.flag, other.flag);
    compareAttributes(differenceOf("attribute", left_.model, left), one.attributes,
                      other.attributes);
}

void ModelComparison::compareMaterials(Node const& left, Node const& right)
{
    MoxRead::Material const& one = left.shape()->material;
    MoxRead::Material const& other = right.shape()->material;
    Difference const place = differenceOf("material", left_.model, left);
    compareNumbers(place, "diffuse", one.diffuse, other.diffuse);
    compareNumbers(place, "specular", one.specular, other.specular);
    compareNumbers(place, "emissive", one.emissive, other.emissive);
    compareNumbers(place, "ambient", one.ambient, other.ambient);
    using Single = std::array<float, 1>;
    compareNumbers(place, "transparency", Single{one.transparency}, Single{other.transparency});
    compareNumbers(place, "shininess", Single{one.shininess}, Single{other.shininess});
    compareFlags(place, "flag", one.flag, other.flag);
}

void ModelComparison::compareDatasetLists(Node const& left, Node const& right)
{
    std::vector<Variable> const& one = left.geometry()->variables;
    std::vector<Variable> const& other = right.geometry()->variables;
    NameMatching const matching(namesOf(one), namesOf(other));
    for (std::size_t const place : matching.onlyLeft)
        addOnly(true, differenceOf("dataset", left_.model, left, one[place]),
                shapeText(left_.model, one[place]));
    for (std::size_t const place : matching.onlyRight)
        addOnly(false, differenceOf("dataset", right_.model, right, other[place]),
                shapeText(right_.model, other[place]));
    for (auto const& [leftPlace, rightPlace] : matching.pairs)
        compareDatasets(left, one[leftPlace], other[rightPlace]);
}

void ModelComparison::compareDatasets(Node const& node, Variable const& left, Variable const& right)
{
    std::string const leftShape = shapeText(left_.model, left);
    std::string const rightShape = shapeText(right_.model, right);
    if (leftShape == rightShape)
        datasets_.push_back({&node, &left, &right});
    else
        add(differenceOf("dataset", left_.model, node, left), leftShape, rightShape);
    compareFlags(differenceOf("dataset", left_.model, node, left), "vibration", left.vibration,
                 right.vibration);
    compareAttributes(differenceOf("attribute", left_.model, node, left), left.attributes,
                      right.attributes);
}

void ModelComparison::compareAttributes(Difference const& place, MoxRead::Attributes const& left,
                                        MoxRead::Attributes const& right)
{
    auto const at = [&place](std::string const& name) {
        Difference difference = place;
        difference.property = name;
        return difference;
    };
    for (auto const& [name, value] : left) {
        auto const other = right.find(name);
        if (other == right.end())
            addOnly(true, at(name), textOf(value));
        else if (!isSame(value, other->second))
            add(at(name), textOf(value), textOf(other->second));
    }
    for (auto const& [name, value] : right)
        if (left.find(name) == left.end())
            addOnly(false, at(name), textOf(value));
}

template <typename Numbers>
void ModelComparison::compareNumbers(Difference const& place, std::string const& property,
                                     Numbers const& left, Numbers const& right)
{
    if (std::equal(left.begin(), left.end(), right.begin(),
                   [this](float one, float other) { return isSame(one, other); }))
        return;
    Difference difference = place;
    difference.property = property;
    add(difference, textOf(left.begin(), left.end()), textOf(right.begin(), right.end()));
}

void ModelComparison::compareFlags(Difference const& place, std::string const& property, bool left,
                                   bool right)
{
    if (left == right)
        return;
    Difference difference = place;
    difference.property = property;
    add(difference, left ? "1" : "0", right ? "1" : "0");
}

// By the blocks of both files: whatever the order of the datasets is, a block of the left file is
// loaded once, and one of the right file once for each block of the left one that it is compared
// with.
void ModelComparison::compareValues(Common::Progress& progress)
{
    std::vector<Places> places;
    for (DatasetPair const& pair : datasets_)
        places.push_back(placesOf(pair));
    std::vector<std::size_t> order(datasets_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
        return places[one] < places[other];
    });
    expectValues(order);
    std::map<std::size_t, ValueDifference> found;
    std::optional<ValueDifference> last;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i == 0 || places[order[i]] != places[order[i - 1]])
            last = valueDifference(datasets_[order[i]]);
        if (!last->isEqual())
            found.emplace(order[i], *last);
        progress.show(i + 1, order.size());
    }
    for (auto const& [number, values] : found) {
        DatasetPair const& pair = datasets_[number];
        Difference difference = differenceOf("values", left_.model, *pair.node, *pair.left);
        difference.values = values;
        difference.columns = componentNames(pair.left->variableType(), pair.left->datasetName());
        differences_.push_back(difference);
    }
}

void ModelComparison::expectValues(std::vector<std::size_t> const& order)
{
    Model::Variables left;
    Model::Variables right;
    for (std::size_t const number : order) {
        left.push_back(datasets_[number].left);
        right.push_back(datasets_[number].right);
    }
    left_.model.expect(left);
    right_.model.expect(right);
}

ModelComparison::Places ModelComparison::placesOf(DatasetPair const& pair) const
{
    Variable const& left = left_.model.resolve(*pair.left);
    Variable const& right = right_.model.resolve(*pair.right);
    return {left_.model.heavyBlock(left),
            right_.model.heavyBlock(right),
            left.dataPosition,
            right.dataPosition,
            left.typeWord,
            left.valueCount};
}

ValueDifference ModelComparison::valueDifference(DatasetPair const& pair)
{
    MoxRead::Dataset left;
    MoxRead::Dataset right;
    inFile(left_.path, [&] { left = left_.model.read(*pair.left); });
    inFile(right_.path, [&] { right = right_.model.read(*pair.right); });
    return ValueDifference::of(left, right, tolerance_);
}

bool ModelComparison::isSame(float left, float right) const
{
    return tolerance_.accepts(static_cast<double>(left), static_cast<double>(right));
}

bool ModelComparison::isSame(MoxRead::AttributeValue const& left,
                             MoxRead::AttributeValue const& right) const
{
    if (left.index() != right.index())
        return false;
    if (auto const* const number = std::get_if<float>(&left))
        return isSame(*number, std::get<float>(right));
    if (auto const* const number = std::get_if<double>(&left))
        return tolerance_.accepts(*number, std::get<double>(right));
    return left == right;
}

void ModelComparison::addOnly(bool isLeft, Difference difference, std::string const& what)
{
    (isLeft ? difference.left : difference.right) = what;
    differences_.push_back(std::move(difference));
}

void ModelComparison::add(Difference difference, std::string const& left, std::string const& right)
{
    difference.left = left;
    difference.right = right;
    differences_.push_back(std::move(difference));
}

} // namespace Mox
