#include "integration/ExpectedModel.h"

#include "integration/DatasetTypes.h"

#include <algorithm>
#include <array>

namespace Integration {

namespace {

using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::PropertyType;

MoxRead::Group plainGroup(MoxRead::Attributes const& attributes, bool flag)
{
    return {{0, 0, 0}, {0, 0, 1, 0}, {1, 1, 1}, flag, attributes};
}

MoxRead::Color scaled(MoxRead::Color const& color, float factor)
{
    return {color[0] * factor, color[1] * factor, color[2] * factor, color[3] * factor};
}

MoxRead::Material plainMaterial()
{
    MoxRead::Material material;
    material.diffuse = {0.8F, 0.8F, 0.8F, 1.0F};
    material.specular = {0.0F, 0.0F, 0.0F, 1.0F};
    material.emissive = {0.0F, 0.0F, 0.0F, 1.0F};
    material.ambient = scaled(material.diffuse, 0.2F);
    material.shininess = 0.2F;
    material.flag = true;
    return material;
}

template <std::size_t count>
void assignAll(std::array<float, count>& to, std::vector<float> const& from)
{
    std::copy_n(from.begin(), count, to.begin());
}

void assignRedGreenBlue(MoxRead::Color& to, std::vector<float> const& from)
{
    std::copy_n(from.begin(), 3, to.begin());
}

Refusal const unstorable{3, "Invalid arguments"};
Refusal const noNode{14, "Key not found"};
Refusal const outOfBounds{11, "Out of bounds error"};

void requireStorable(AttributeSet const& attributes)
{
    if (!attributes.isStorable())
        throw unstorable;
}

/// What a property may be set to.
struct PropertyFacts
{
    PropertySet::Form form;
    Kind owner;
    std::size_t fewest;
    std::size_t most;
};

PropertyFacts const& propertyFacts(PropertyType type)
{
    using Form = PropertySet::Form;
    static std::array<PropertyFacts, 10> const table{{{Form::Numbers, Kind::Group, 3, 3},
                                                      {Form::Numbers, Kind::Group, 4, 4},
                                                      {Form::Numbers, Kind::Group, 3, 3},
                                                      {Form::Numbers, Kind::Shape, 3, 4},
                                                      {Form::Numbers, Kind::Shape, 3, 4},
                                                      {Form::Numbers, Kind::Shape, 3, 3},
                                                      {Form::Numbers, Kind::Shape, 3, 3},
                                                      {Form::Number, Kind::Shape, 1, 1},
                                                      {Form::Number, Kind::Shape, 1, 1},
                                                      {Form::Number, Kind::Shape, 1, 1}}};
    return table.at(static_cast<std::size_t>(type));
}

void requireFit(PropertyType type, PropertySet::Entry const& entry, ExpectedNode const& node)
{
    if (type > PropertyType::Unsupported)
        throw Refusal{3, "Invalid properties"};
    if (type == PropertyType::Unsupported || entry.form != propertyFacts(type).form)
        throw Refusal{19, "Template specialization not defined"};
    if (node.kind != propertyFacts(type).owner)
        throw Refusal{3, "empty node"};
    std::size_t const count = entry.values.size();
    if (count < propertyFacts(type).fewest || count > propertyFacts(type).most)
        throw Refusal{3, "invalid array size"};
}

void apply(PropertyType type, std::vector<float> const& values, ExpectedNode& node)
{
    switch (type) {
    case PropertyType::Translation:
        return assignAll(node.group.translation, values);
    case PropertyType::Rotation:
        return assignAll(node.group.rotation, values);
    case PropertyType::Scale:
        return assignAll(node.group.scale, values);
    case PropertyType::DiffuseColor:
        return assignRedGreenBlue(node.material.diffuse, values);
    case PropertyType::SpecularColor:
        return assignRedGreenBlue(node.material.specular, values);
    case PropertyType::EmissiveColor:
        return assignRedGreenBlue(node.material.emissive, values);
    case PropertyType::AmbientColor:
        return assignRedGreenBlue(node.material.ambient, values);
    case PropertyType::Transparency:
        node.material.transparency = values.at(0);
        return;
    case PropertyType::AmbientIntensity:
        node.material.ambient = scaled(node.material.diffuse, values.at(0));
        return;
    case PropertyType::Shininess:
        node.material.shininess = values.at(0);
        return;
    case PropertyType::Unsupported:
        return;
    }
}

bool isKept(std::string const& attribute)
{
    static std::array<std::string, 5> const dropped{"Complex", "Contents", "DataSource", "DataType",
                                                    "Structure"};
    return attribute.substr(0, 5) != "Link." &&
           std::find(dropped.begin(), dropped.end(), attribute) == dropped.end();
}

bool isVibration(MoxRead::Attributes const& attributes)
{
    auto const category = attributes.find("Category");
    return category != attributes.end() &&
           category->second == MoxRead::AttributeValue(std::string("Vibration"));
}

/// Of equally named attributes of a dataset and a step, the dataset's holds.
MoxRead::Attributes merged(ArrayCall const& call, NamedStep const& step)
{
    MoxRead::Attributes result = call.attributes.stored();
    for (auto const& entry : step.attributes.stored())
        result.insert(entry);
    return result;
}

/// What stands between the separators, which may be nothing.
std::vector<std::string> split(std::string const& path, std::string const& separator)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = path.find(separator); end != std::string::npos;
         end = path.find(separator, start)) {
        parts.push_back(path.substr(start, end - start));
        start = end + separator.size();
    }
    parts.push_back(path.substr(start));
    return parts;
}

std::string registeredName(ArrayCall const& call, NamedStep const& step)
{
    std::string const name = call.name ? *call.name : factsOf(call.type).defaultName;
    return step.name.empty() ? name : name + '\x1E' + step.name;
}

} // namespace

ExpectedModel::ExpectedModel() : nodes_(1) {}

unsigned int ExpectedModel::addNode(NodeType type, std::string const& name,
                                    AttributeSet const& attributes)
{
    if (node(1).kind != Kind::None)
        return addBelowRoot(type, name, attributes);
    if (type < NodeType::FlaggedRootGroup || type > NodeType::Shape)
        throw Refusal{3, "Invalid node type for root node"};
    if (type != NodeType::Shape)
        requireStorable(attributes);
    fillRoot(type, name, attributes);
    return current_;
}

unsigned int ExpectedModel::addBelowRoot(NodeType type, std::string const& name,
                                         AttributeSet const& attributes)
{
    if (type != NodeType::Group && type != NodeType::Shape)
        throw Refusal{3, "Invalid node type"};
    if (type == NodeType::Group)
        requireStorable(attributes);
    requireCurrentNode();
    if (type == NodeType::Shape) {
        addChild(Kind::Shape, name);
        addChild(Kind::Geometry, name);
    } else {
        addChild(Kind::Group, name);
        at(current_).group.attributes = attributes.stored();
    }
    return current_;
}

void ExpectedModel::requireCurrentNode() const
{
    if (current_ == 0)
        throw noNode;
}

void ExpectedModel::requireNode(std::uint32_t id) const
{
    if (id == 0 || id > nodes_.size())
        throw outOfBounds;
}

void ExpectedModel::setCurrentNodeId(unsigned int id)
{
    requireNode(id);
    current_ = id;
}

void ExpectedModel::fillRoot(NodeType type, std::string const& name, AttributeSet const& attributes)
{
    current_ = 1;
    ExpectedNode& root = at(1);
    root.name = name;
    root.kind = type == NodeType::Shape ? Kind::Shape : Kind::Group;
    root.group = plainGroup(attributes.stored(), type == NodeType::FlaggedRootGroup);
    root.material = plainMaterial();
}

void ExpectedModel::addChild(Kind kind, std::string const& name)
{
    ExpectedNode child;
    child.kind = kind;
    child.name = name;
    child.parent = current_;
    child.group = plainGroup({}, false);
    child.material = plainMaterial();
    nodes_.push_back(child);
    auto const id = static_cast<std::uint32_t>(nodes_.size());
    at(current_).children.push_back(id);
    current_ = id;
}

void ExpectedModel::setNodeData(unsigned int id, PropertySet const& properties,
                                AttributeSet const& attributes)
{
    requireNode(id);
    current_ = at(id).kind == Kind::Geometry ? at(id).parent : id;
    ExpectedNode& target = at(current_);
    for (auto const& [type, entry] : properties.entries()) {
        requireFit(type, entry, target);
        apply(type, entry.values, target);
    }
    if (target.kind != Kind::Group)
        return;
    requireStorable(attributes);
    for (auto const& [name, value] : attributes.stored())
        target.group.attributes[name] = value;
}

unsigned int ExpectedModel::addComponent(ComponentPath const& path)
{
    if (path.names.empty())
        return 0;
    if (node(1).kind == Kind::None)
        fillRoot(NodeType::RootGroup, path.names.front(), AttributeSet());
    if (node(1).name != path.names.front())
        throw Refusal{20, "Not yet implemented"};
    current_ = 1;
    for (std::size_t index = 1; index < path.names.size(); ++index) {
        bool const isShape = index + 1 == path.names.size() && !path.endsInGroup;
        moveToOrAdd(isShape ? Kind::Shape : Kind::Group, path.names[index]);
        if (isShape)
            moveToOrAdd(Kind::Geometry, path.names[index]);
    }
    return current_;
}

void ExpectedModel::moveToOrAdd(Kind kind, std::string const& name)
{
    for (std::uint32_t const child : node(current_).children) {
        if (node(child).kind == kind && node(child).name == name) {
            current_ = child;
            return;
        }
    }
    addChild(kind, name);
}

void ExpectedModel::addArray(ArrayCall const& call)
{
    if (call.values.words.empty() || call.ids.empty())
        return;
    if (call.values.width != factsOf(call.type).width)
        throw Refusal{3, "Invalid arguments"};
    auto const values = std::make_shared<Values const>(call.values);
    std::uint64_t const position = heavyLength_;
    heavyLength_ += values->byteCount();
    // The values are written before the attributes are looked at.
    requireStorable(call.attributes);
    MoxRead::VariableReference first;
    for (unsigned int const id : call.ids) {
        for (NamedStep const& step : call.steps) {
            requireStorable(step.attributes);
            current_ = id > nodes_.size() ? 0 : id;
            requireCurrentNode();
            if (node(id).kind != Kind::Geometry)
                continue;
            auto const added = registerVariable(id, call, step, values, position);
            if (first.nodeId == 0)
                first = added;
            else if (first.nodeId != added.nodeId || first.index != added.index)
                link(added, first);
        }
    }
}

MoxRead::VariableReference
ExpectedModel::registerVariable(unsigned int id, ArrayCall const& call, NamedStep const& step,
                                std::shared_ptr<Values const> const& values, std::uint64_t position)
{
    std::string const name = registeredName(call, step);
    std::vector<ExpectedVariable>& variables = at(id).variables;
    auto found = std::find_if(variables.begin(), variables.end(),
                              [&](ExpectedVariable const& other) { return other.name == name; });
    if (found == variables.end())
        found = variables.insert(variables.end(), ExpectedVariable());
    MoxRead::Attributes const attributes = merged(call, step);
    found->name = name;
    found->variableType = factsOf(call.type).variableType;
    found->values = values;
    found->position = position;
    found->linked = false;
    found->vibration = isVibration(attributes);
    for (auto const& [key, value] : attributes)
        if (isKept(key))
            found->attributes[key] = value;
    return {id, static_cast<std::uint32_t>(found - variables.begin())};
}

void ExpectedModel::link(MoxRead::VariableReference const& target,
                         MoxRead::VariableReference const& source)
{
    ExpectedVariable& variable = at(target.nodeId).variables.at(target.index);
    variable.linked = true;
    variable.link = source;
    variable.attributes.clear();
}

unsigned int ExpectedModel::getNodeId(std::vector<std::string> const& names)
{
    std::string path;
    for (std::string const& name : names)
        path += '\x1E' + name;
    return getNodeId(path, "\x1E");
}

unsigned int ExpectedModel::getNodeId(std::string const& path, std::string const& separator)
{
    if (path.empty())
        return 0;
    current_ = 1;
    std::string const start = separator + node(1).name;
    if (node(1).kind == Kind::None || path.substr(0, start.size()) != start)
        return 0;
    std::string const rest = path.substr(start.size());
    // What stands behind the root's name is not compared with the separator.
    if (rest.size() < separator.size())
        throw Refusal{0, "out of range"};
    std::uint32_t found = 1;
    for (std::string const& name : split(rest.substr(separator.size()), separator))
        found = found == 0 ? 0 : childOf(found, name);
    return found;
}

/// The first child of that name, or 0.
std::uint32_t ExpectedModel::childOf(std::uint32_t id, std::string const& name) const
{
    std::vector<std::uint32_t> const& children = node(id).children;
    auto const child = std::find_if(children.begin(), children.end(), [&](std::uint32_t candidate) {
        return node(candidate).name == name;
    });
    return child == children.end() ? 0 : *child;
}

unsigned int ExpectedModel::moveToParentNode()
{
    requireCurrentNode();
    unsigned int const parent = node(current_).parent;
    if (parent != 0)
        current_ = parent;
    return parent;
}

ExpectedVariable const& ExpectedModel::resolved(ExpectedVariable const& variable) const
{
    ExpectedVariable const* result = &variable;
    while (result->linked)
        result = &node(result->link.nodeId).variables.at(result->link.index);
    return *result;
}

} // namespace Integration
