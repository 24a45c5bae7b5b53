// Calls as one rank tells another of them. Both run the same program: numbers are as they are in
// memory, and there is no version.
//
//   byte    kind: 1 a node, 2 data of a node, 3 an array
//
//   node:   uint32 id, uint32 parent, int32 type, text name, attributes
//   data:   uint32 id, properties, attributes
//   array:  byte whether it has a name, text name, uint32 type,
//           uint64 number of ids, uint32 ids,
//           uint64 number of steps, each of them: text name, attributes
//           attributes, uint32 element, uint64 rows, uint64 columns, then rows x columns x 4 bytes
//
//   text:        uint64 length, bytes
//   attributes:  uint64 number, each of them: text name, byte type, value
//   properties:  uint64 number, each of them: uint32 property, byte type, value
//
// The type of a value is its place in the library's list of types, the value a number, a text, or a
// uint64 and so many numbers.

#include "Zyl2/Mpi/CallStream.h"

#include "Zyl2/Mox2/StepData.h"
#include "Zyl2/Mpi/Failure.h"
#include "Zyl2/Mpi/StoredValues.h"

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include <stdexcept>
#include <type_traits>

namespace Zyl2 {
namespace Mpi {

using Mox2::AttributeMap;
using Mox2::PropertyMap;

namespace {

/// The types that a model stores, in the order of the library's list.
enum class AttributeType : std::uint8_t
{
    Float = 0,
    Int = 2,
    UnsignedInt = 4,
    Text = 6,
    Double = 10,
    Long = 14
};

} // namespace

template <typename T>
void CallEncoder::putNumber(T value)
{
    static_assert(std::is_arithmetic_v<T> || std::is_enum_v<T>, "numbers only");
    to_.put(&value, sizeof value);
}

template <typename T>
void CallEncoder::putAll(std::vector<T> const& values)
{
    putNumber(static_cast<std::uint64_t>(values.size()));
    to_.put(values.data(), values.size() * sizeof(T));
}

void CallEncoder::put(std::string const& text)
{
    putNumber(static_cast<std::uint64_t>(text.size()));
    to_.put(text.data(), text.size());
}

void CallEncoder::put(AttributeMap const& attributes)
{
    putNumber(static_cast<std::uint64_t>(attributes.size()));
    for (auto const& [name, value] : attributes) {
        put(name);
        putNumber(static_cast<std::uint8_t>(value.which()));
        boost::apply_visitor(
            [this](auto const& one) {
                using Value = std::decay_t<decltype(one)>;
                if constexpr (std::is_same_v<Value, std::string>)
                    put(one);
                else if constexpr (std::is_arithmetic_v<Value>)
                    putNumber(one);
                else
                    // A model has refused it before.
                    throw std::logic_error("an attribute of a type that can't be stored");
            },
            value);
    }
}

void CallEncoder::put(PropertyMap const& properties)
{
    putNumber(static_cast<std::uint64_t>(properties.size()));
    for (auto const& [type, value] : properties) {
        putNumber(type);
        putNumber(static_cast<std::uint8_t>(value.which()));
        boost::apply_visitor(
            [this](auto const& one) {
                using Value = std::decay_t<decltype(one)>;
                if constexpr (std::is_same_v<Value, std::string>)
                    put(one);
                else if constexpr (std::is_arithmetic_v<Value>)
                    putNumber(one);
                else
                    putAll(one);
            },
            value);
    }
}

void CallEncoder::put(NodeCall const& call)
{
    putNumber(CallKind::Node);
    putNumber(call.id);
    putNumber(call.parent);
    putNumber(call.type);
    put(call.name);
    put(call.attributes.map());
}

void CallEncoder::put(NodeDataCall const& call)
{
    putNumber(CallKind::NodeData);
    putNumber(call.id);
    put(call.properties.map());
    put(call.attributes.map());
}

void CallEncoder::put(ArrayCall const& call)
{
    putNumber(CallKind::Array);
    putNumber(call.hasName);
    put(call.name);
    putNumber(call.type);
    putAll(call.ids);
    putNumber(static_cast<std::uint64_t>(call.steps.size()));
    for (Mox2::StepData const& step : call.steps.data()) {
        put(step.name);
        put(step.attributes);
    }
    put(call.attributes.map());
    putNumber(call.element);
    putNumber(call.rows);
    putNumber(call.columns);
}

void CallEncoder::putValues(Mox2::ArrayView const& values)
{
    visitStored(values, [this](void const* bytes, std::size_t count) { to_.put(bytes, count); });
}

template <typename T>
T CallDecoder::takeNumber()
{
    T value;
    from_.take(&value, sizeof value);
    return value;
}

template <typename T>
std::vector<T> CallDecoder::takeAll()
{
    std::vector<T> values(takeNumber<std::uint64_t>());
    from_.take(values.data(), values.size() * sizeof(T));
    return values;
}

std::string CallDecoder::takeText()
{
    std::string text(takeNumber<std::uint64_t>(), '\0');
    from_.take(text.data(), text.size());
    return text;
}

Mox2::Attributes CallDecoder::takeAttributes()
{
    Mox2::Attributes attributes;
    auto const count = takeNumber<std::uint64_t>();
    for (std::uint64_t i = 0; i < count; ++i) {
        std::string const name = takeText();
        switch (takeNumber<AttributeType>()) {
        case AttributeType::Float:
            attributes.set(name, takeNumber<float>());
            break;
        case AttributeType::Int:
            attributes.set(name, takeNumber<int>());
            break;
        case AttributeType::UnsignedInt:
            attributes.set(name, takeNumber<unsigned int>());
            break;
        case AttributeType::Text:
            attributes.set(name, takeText());
            break;
        case AttributeType::Double:
            attributes.set(name, takeNumber<double>());
            break;
        case AttributeType::Long:
            attributes.set(name, takeNumber<long>());
            break;
        default:
            throw std::logic_error("an attribute of a type that can't be stored");
        }
    }
    return attributes;
}

Mox2::NodeProperties CallDecoder::takeProperties()
{
    Mox2::NodeProperties properties;
    auto const count = takeNumber<std::uint64_t>();
    for (std::uint64_t i = 0; i < count; ++i) {
        auto const type = takeNumber<Mox2::PropertyType>();
        switch (takeNumber<std::uint8_t>()) {
        case 0:
            properties.set(type, takeNumber<int>());
            break;
        case 1:
            properties.set(type, takeNumber<float>());
            break;
        case 2:
            properties.set(type, takeText());
            break;
        case 3:
            properties.set(type, takeAll<int>());
            break;
        default:
            properties.set(type, takeAll<float>());
        }
    }
    return properties;
}

CallKind CallDecoder::takeKind()
{
    return takeNumber<CallKind>();
}

NodeCall CallDecoder::takeNode()
{
    NodeCall call;
    call.id = takeNumber<std::uint32_t>();
    call.parent = takeNumber<std::uint32_t>();
    call.type = takeNumber<Mox2::NodeType>();
    call.name = takeText();
    call.attributes = takeAttributes();
    return call;
}

NodeDataCall CallDecoder::takeNodeData()
{
    NodeDataCall call;
    call.id = takeNumber<std::uint32_t>();
    call.properties = takeProperties();
    call.attributes = takeAttributes();
    return call;
}

ArrayCall CallDecoder::takeArray()
{
    ArrayCall call;
    call.hasName = takeNumber<bool>();
    call.name = takeText();
    call.type = takeNumber<Mox2::DatasetType>();
    call.ids = takeAll<std::uint32_t>();
    auto const steps = takeNumber<std::uint64_t>();
    call.steps = Mox2::StepList(steps);
    for (std::uint64_t i = 0; i < steps; ++i) {
        std::string const name = takeText();
        call.steps.set(i, Mox2::Step(name, takeAttributes()));
    }
    call.attributes = takeAttributes();
    call.element = takeNumber<Mox2::ArrayView::Element>();
    call.rows = takeNumber<std::uint64_t>();
    call.columns = takeNumber<std::uint64_t>();
    return call;
}

} // namespace Mpi
} // namespace Zyl2
