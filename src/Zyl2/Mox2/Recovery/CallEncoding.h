#ifndef ZYL2_MOX2_RECOVERY_CALLENCODING_H
#define ZYL2_MOX2_RECOVERY_CALLENCODING_H

#include "Zyl2/Mox2/Adder/ArrayProperty.h"
#include "Zyl2/Mox2/Adder/Components.h"
#include "Zyl2/Mox2/Adder/Node.h"
#include "Zyl2/Mox2/Modifier/NodeData.h"
#include "Zyl2/Mox2/Recovery/ByteReader.h"
#include "Zyl2/Mox2/Recovery/ByteWriter.h"

#include <cstdint>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

/// The calls that change a model.
enum class CallKind : std::uint8_t
{
    AddNode = 1,
    SetNodeData = 2,
    AddPaths = 3,
    AddComponents = 4,
    AddArray = 5
};

// What a command is told, but for the values of arrays.

void write(ByteWriter& to, Adder::Node const& command);
void write(ByteWriter& to, Modifier::NodeData const& command);
void write(ByteWriter& to,
           Adder::Components<std::vector<std::string>, ComponentArray> const& command);
void write(ByteWriter& to,
           Adder::Components<std::map<std::string, Attributes>, ComponentArray> const& command);
template <typename DatasetT>
void write(ByteWriter& to,
           Adder::ArrayProperty<DatasetT, ComponentArray, std::vector<StepData>> const& command);

// What `write` has put behind the kind.

struct NodeCall
{
    explicit NodeCall(ByteReader& from);
    NodeType type;
    std::string name;
    Attributes attributes;
};

struct NodeDataCall
{
    explicit NodeDataCall(ByteReader& from);
    unsigned int id;
    NodeProperties properties;
    Attributes attributes;
};

struct PathsCall
{
    explicit PathsCall(ByteReader& from);
    std::string separator;
    std::vector<std::string> paths;
};

struct ComponentsCall
{
    explicit ComponentsCall(ByteReader& from);
    std::string separator;
    std::map<std::string, Attributes> components;
};

struct ArrayCall
{
    explicit ArrayCall(ByteReader& from);
    std::string name;
    DatasetType type;
    Zyl2Mox::ElementCode element;
    std::int64_t rows;
    std::int64_t columns;
    ComponentArray components;
    std::vector<StepData> steps;
    Attributes attributes;
};

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2

#endif
