#ifndef MOXREAD_NODE_H
#define MOXREAD_NODE_H

#include "moxread/Attributes.h"
#include "moxread/Export.h"
#include "moxread/Material.h"
#include "moxread/Variable.h"

#include <array>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace MoxRead {

struct Group
{
    std::array<float, 3> translation = {};
    /// Axis and angle.
    std::array<float, 4> rotation = {};
    std::array<float, 3> scale = {};
    bool flag = false;
    Attributes attributes;
};

struct Shape
{
    Material material;
};

struct Geometry
{
    std::vector<Variable> variables;
};

/// One node of the tree. The ids of its family are 0 where there is none.
struct MOXREAD_EXPORT Node
{
    std::uint32_t id = 0;
    std::uint32_t parent = 0;
    std::uint32_t previousSibling = 0;
    std::uint32_t nextSibling = 0;
    std::uint32_t firstChild = 0;
    std::uint32_t lastChild = 0;
    std::string name;
    /// "Group", "Shape", "Geometry", or empty for a node that never got a content.
    std::string type;
    std::string version;
    std::uint64_t lightPosition = 0;
    std::variant<std::monostate, Group, Shape, Geometry> content;

    /// Null when the node is of another kind.
    Group const* group() const;
    Shape const* shape() const;
    Geometry const* geometry() const;
};

} // namespace MoxRead

#endif
