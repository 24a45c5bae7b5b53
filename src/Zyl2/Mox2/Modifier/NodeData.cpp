#include "Zyl2/Mox2/Modifier/NodeData.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Log/Statement.h"
#include "Zyl2/Mox/Geometry.h"
#include "Zyl2/Mox2/Helper/Attributes.h"

#include <boost/variant/static_visitor.hpp>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mox2 {
namespace Modifier {

namespace {

namespace NodeDataSites = Exception::Sites::NodeData;

struct PropertyUse
{
    char const* name;
    char const* use;
};

// Name of each property and what its value is, in the order of `PropertyType`.
constexpr std::array<PropertyUse, 11> propertyUses{{{"Translation", "3 floats of a group"},
                                                    {"Rotation", "4 floats of a group"},
                                                    {"Scale", "3 floats of a group"},
                                                    {"DiffuseColor", "3 or 4 floats of a shape"},
                                                    {"SpecularColor", "3 or 4 floats of a shape"},
                                                    {"EmissiveColor", "3 floats of a shape"},
                                                    {"AmbientColor", "3 floats of a shape"},
                                                    {"Transparency", "a float of a shape"},
                                                    {"AmbientIntensity", "a float of a shape"},
                                                    {"Shininess", "a float of a shape"},
                                                    {"Unsupported", "never a value"}}};

/// What a property value is, in words.
class ValueInWords : public boost::static_visitor<std::string>
{
public:
    std::string operator()(int) const { return Exception::sentence("an int"); }
    std::string operator()(float) const { return Exception::sentence("a float"); }
    std::string operator()(std::string const&) const { return Exception::sentence("a text"); }
    std::string operator()(std::vector<int> const& values) const
    {
        return Exception::sentence(values.size(), " ints");
    }
    std::string operator()(std::vector<float> const& values) const
    {
        return Exception::sentence(values.size(), " floats");
    }
};

} // namespace

/// What the property is, and what it was asked to be.
std::string NodeData::misuse(PropertyType type, PropertyValue const& value,
                             Target const& target) const noexcept
{
    auto const& [name, use] = propertyUses[static_cast<std::size_t>(type)];
    char const* const kind = target.group != nullptr   ? "a group"
                             : target.shape != nullptr ? "a shape"
                                                       : "neither a group nor a shape";
    return Exception::sentence(name, " is ", use, "; node ", id_, " is ", kind, " and was given ",
                               boost::apply_visitor(ValueInWords(), value));
}

NodeData::NodeData(unsigned int id, NodeProperties const& properties, Attributes const& attributes)
    : id_(id), properties_(properties), attributes_(attributes)
{}

void NodeData::update(Database& database)
{
    database.assertOpenedForWriting();
    database.assertNotEmpty();
    Zyl2Mox::Tree& tree = *database.tree;
    if (id_ == 0 || id_ > tree.GetNodeCount())
        Exception::raise(NodeDataSites::NoSuchNode,
                         Exception::sentence("no node has the id ", id_, "; the last one is ",
                                             tree.GetNodeCount()));
    Target const target = moveToTarget(tree);
    for (auto const& [type, value] : properties_.map()) {
        if (type > PropertyType::Unsupported)
            Exception::raise(
                NodeDataSites::NoSuchProperty,
                Exception::sentence(static_cast<unsigned int>(type), " is no property type"));
        try {
            apply(type, value, target);
        } catch (Exception::Exception const& failure) {
            attachDetail(failure, misuse(type, value, target));
            throw;
        }
    }
    if (attributes_.map().empty())
        return;
    if (target.group != nullptr)
        mergeAttributes(attributes_, *target.group);
    else
        Log::warn("Zyl2/Mox2/Modifier/NodeData", BOOST_CURRENT_FUNCTION, __LINE__, "Node ", id_,
                  " was given attributes: only groups carry them, they are dropped");
}

void NodeData::raiseEmptyNode(char const* function)
{
    Exception::raiseFrom(NodeDataSites::OtherKindOfNode, function);
}

/// A geometry's id stands for its shape: it is the id that a host has of a shape.
NodeData::Target NodeData::moveToTarget(Zyl2Mox::Tree& tree) const
{
    tree.SetCurrentId(id_);
    auto const& record = tree.GetCurrentNode();
    Target target{dynamic_cast<Zyl2Mox::Group*>(record.value),
                  dynamic_cast<Zyl2Mox::Shape*>(record.value)};
    bool const isGeometry = dynamic_cast<Zyl2Mox::Geometry*>(record.value) != nullptr;
    if (target.shape == nullptr && isGeometry && record.parent != 0) {
        tree.SetCurrentId(record.parent);
        target.shape = dynamic_cast<Zyl2Mox::Shape*>(tree.GetCurrentNode().value);
    }
    return target;
}

void NodeData::apply(PropertyType type, PropertyValue const& value, Target const& target)
{
    using Zyl2Mox::Group;
    using Zyl2Mox::Material;
    switch (type) {
    case PropertyType::Translation:
        return setOnGroup(&Group::SetTranslation, value, target);
    case PropertyType::Rotation:
        return setOnGroup(&Group::SetRotation, value, target);
    case PropertyType::Scale:
        return setOnGroup(&Group::SetScale, value, target);
    case PropertyType::DiffuseColor:
        return setOnMaterial(&Material::SetDiffuseColor, value, target);
    case PropertyType::SpecularColor:
        return setOnMaterial(&Material::SetSpecularColor, value, target);
    case PropertyType::EmissiveColor:
        return setOnMaterial(&Material::SetEmissiveColor, value, target);
    case PropertyType::AmbientColor:
        return setOnMaterial(&Material::SetAmbientColor, value, target);
    case PropertyType::Transparency:
        return setOnMaterial(&Material::SetTransparency, value, target);
    case PropertyType::AmbientIntensity:
        return setOnMaterial(&Material::SetAmbientIntensity, value, target);
    case PropertyType::Shininess:
        return setOnMaterial(&Material::SetShininess, value, target);
    case PropertyType::Unsupported:
        // Asking for a bool always fails, because no property value is one. To fail is all that
        // this property does.
        static_cast<void>(valueFrom<bool>(value));
    }
}

// The value is extracted before the target is looked at, which decides what fails first.

void NodeData::setOnGroup(GroupSetter setter, PropertyValue const& value, Target const& target)
{
    auto const values = valueFrom<std::vector<float>>(value);
    (notNull(target.group)->*setter)(values);
}

void NodeData::setOnMaterial(ColorSetter setter, PropertyValue const& value, Target const& target)
{
    auto const values = valueFrom<std::vector<float>>(value);
    (notNull(target.shape)->GetMaterial().*setter)(values);
}

void NodeData::setOnMaterial(NumberSetter setter, PropertyValue const& value, Target const& target)
{
    auto const number = valueFrom<float>(value);
    (notNull(target.shape)->GetMaterial().*setter)(number);
}

void NodeData::mergeAttributes(Attributes const& attributes, Zyl2Mox::Group& group)
{
    for (auto const& [name, value] : Helper::Attributes::moxAttributeList(attributes))
        group.GetAttributes()[name] = value;
}

} // namespace Modifier
} // namespace Mox2
} // namespace Zyl2
