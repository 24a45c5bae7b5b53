#ifndef ZYL2_MOX2_MODIFIER_NODEDATA_H
#define ZYL2_MOX2_MODIFIER_NODEDATA_H

#include <Zyl2/Mox2/Attributes.h>
#include <Zyl2/Mox2/NodeProperties.h>

#include "Zyl2/Base/Modifier.h"
#include "Zyl2/Mox/Group.h"
#include "Zyl2/Mox/Shape.h"
#include "Zyl2/Mox2/Database.h"
#include "Zyl2/Mox2/PropertyMap.h"
#include "Zyl2/Variant/Visitor/ValueGetter.h"

#include <string>
#include <vector>

namespace Zyl2 {
namespace Mox2 {
namespace Modifier {

/// Sets properties of a node and merges attributes into it.
class NodeData : public Base::Modifier<Database>
{
public:
    NodeData(unsigned int id, NodeProperties const& properties, Attributes const& attributes);

    /// \throws InvalidObjectState "File not open."; "File not opened in write mode"
    /// \throws OutOfBounds the id is 0 or past the last node
    /// \throws InvalidArguments a property or attribute doesn't fit
    /// \throws TemplateSpecializationNotDefined a value of another type than the property expects
    void update(Database& database) override;

    unsigned int getId() const { return id_; }
    NodeProperties const& getProperties() const { return properties_; }
    Attributes const& getAttributes() const { return attributes_; }

    /// \return `node`
    /// \throws InvalidArguments "empty node": it is null
    template <typename PtrType>
    static PtrType notNull(PtrType node)
    {
        if (node == nullptr)
            raiseEmptyNode(BOOST_CURRENT_FUNCTION);
        return node;
    }

    /// \throws TemplateSpecializationNotDefined the value is of another type
    template <typename T>
    static T valueFrom(PropertyValue const& value)
    {
        static Variant::Visitor::ValueGetter<T> const val_getter;
        return boost::apply_visitor(val_getter, value);
    }

private:
    /// The node as what it may be; one of them is set, or none.
    struct Target
    {
        Zyl2Mox::Group* group;
        Zyl2Mox::Shape* shape;
    };

    [[noreturn]] static void raiseEmptyNode(char const* function);
    std::string misuse(PropertyType type, PropertyValue const& value,
                       Target const& target) const noexcept;
    Target moveToTarget(Zyl2Mox::Tree& tree) const;
    using GroupSetter = void (Zyl2Mox::Group::*)(std::vector<float> const&);
    using ColorSetter = void (Zyl2Mox::Material::*)(std::vector<float> const&);
    using NumberSetter = void (Zyl2Mox::Material::*)(float);

    static void setOnGroup(GroupSetter setter, PropertyValue const& value, Target const& target);
    static void setOnMaterial(ColorSetter setter, PropertyValue const& value, Target const& target);
    static void setOnMaterial(NumberSetter setter, PropertyValue const& value,
                              Target const& target);
    static void apply(PropertyType type, PropertyValue const& value, Target const& target);
    static void mergeAttributes(Attributes const& attributes, Zyl2Mox::Group& group);

    unsigned int id_;
    NodeProperties properties_;
    Attributes attributes_;
};

} // namespace Modifier
} // namespace Mox2
} // namespace Zyl2

#endif
