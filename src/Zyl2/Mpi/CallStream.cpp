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

#include "Zyl2/Mox2/AttributeMap.h"
#include "Zyl2/Mox2/PropertyMap.h"
#include "Zyl2/Mox2/StepData.h"
#include "Zyl2/Mpi/StoredValues.h"

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include <stdexcept>
#include <type_traits>

namespace Zyl2 {
namespace Mpi {

namespace {

/// The types that a model stores, in the order of the library's list. A double is narrowed to a
/// float when it is set.
enum class AttributeType : std::uint8_t
{
    Float = 0,
    Int = 2,
    UnsignedInt = 4,
    Text = 6,
    Long = 14
};

/// The place of `float` in the library's list of types of properties.
constexpr std::uint8_t NumberProperty = 1;

// The parts of each call in their order, for the one who writes as for the one who reads.

template <typename StreamT, typename CallT>
void passNode(StreamT& stream, CallT& call)
{
    stream.pass(call.id);
    stream.pass(call.parent);
    stream.pass(call.type);
    stream.pass(call.name);
    stream.pass(call.attributes);
}

template <typename StreamT, typename CallT>
void passNodeData(StreamT& stream, CallT& call)
{
    stream.pass(call.id);
    stream.pass(call.properties);
    stream.pass(call.attributes);
}

template <typename StreamT, typename CallT>
void passArray(StreamT& stream, CallT& call)
{
    stream.pass(call.hasName);
    stream.pass(call.name);
    stream.pass(call.type);
    stream.pass(call.ids);
    stream.pass(call.steps);
    stream.pass(call.attributes);
    stream.pass(call.element);
    stream.pass(call.rows);
    stream.pass(call.columns);
}

} // namespace

/// Puts the parts of calls into an outbox.
class CallEncoder::Parts
{
public:
    explicit Parts(Outbox& to) : to_(to) {}

    template <typename T>
    void pass(T const& number)
    {
        static_assert(std::is_arithmetic_v<T> || std::is_enum_v<T>, "numbers only");
        to_.put(&number, sizeof number);
    }

    void pass(std::string const& text)
    {
        passCount(text.size());
        to_.put(text.data(), text.size());
    }

    template <typename T>
    void pass(std::vector<T> const& values)
    {
        passCount(values.size());
        to_.put(values.data(), values.size() * sizeof(T));
    }

    void pass(Mox2::AttributeMap const& attributes)
    {
        passCount(attributes.size());
        for (auto const& [name, value] : attributes) {
            pass(name);
            passValue(value);
        }
    }

    void pass(Mox2::Attributes const& attributes) { pass(attributes.map()); }

    void pass(Mox2::NodeProperties const& properties)
    {
        passCount(properties.map().size());
        for (auto const& [type, value] : properties.map()) {
            pass(type);
            passValue(value);
        }
    }

    void pass(Mox2::StepList const& steps)
    {
        passCount(steps.size());
        for (Mox2::StepData const& step : steps.data()) {
            pass(step.name);
            pass(step.attributes);
        }
    }

private:
    void passCount(std::size_t count) { pass(static_cast<std::uint64_t>(count)); }

    /// The reader refuses types that a model has refused before.
    template <typename VariantT>
    void passValue(VariantT const& value)
    {
        pass(static_cast<std::uint8_t>(value.which()));
        boost::apply_visitor(
            [this](auto const& one) {
                using Value = std::decay_t<decltype(one)>;
                if constexpr (std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string> ||
                              std::is_same_v<Value, std::vector<int>> ||
                              std::is_same_v<Value, std::vector<float>>)
                    this->pass(one);
            },
            value);
    }

    Outbox& to_;
};

/// Takes the parts of calls from an inbox.
class CallDecoder::Parts
{
public:
    explicit Parts(Inbox& from) : from_(from) {}

    template <typename T>
    void pass(T& number)
    {
        static_assert(std::is_arithmetic_v<T> || std::is_enum_v<T>, "numbers only");
        from_.take(&number, sizeof number);
    }

    void pass(std::string& text)
    {
        text.resize(take<std::uint64_t>());
        from_.take(&text[0], text.size());
    }

    template <typename T>
    void pass(std::vector<T>& values)
    {
        values.resize(take<std::uint64_t>());
        from_.take(values.data(), values.size() * sizeof(T));
    }

    void pass(Mox2::Attributes& attributes)
    {
        for (auto left = take<std::uint64_t>(); left != 0; --left) {
            auto const name = take<std::string>();
            passAttribute(attributes, name);
        }
    }

    void pass(Mox2::NodeProperties& properties)
    {
        for (auto left = take<std::uint64_t>(); left != 0; --left) {
            auto const type = take<Mox2::PropertyType>();
            passProperty(properties, type);
        }
    }

    void pass(Mox2::StepList& steps)
    {
        auto const count = take<std::uint64_t>();
        steps = Mox2::StepList(count);
        for (std::uint64_t i = 0; i < count; ++i) {
            auto const name = take<std::string>();
            steps.set(i, Mox2::Step(name, take<Mox2::Attributes>()));
        }
    }

    template <typename T>
    T take()
    {
        T value{};
        pass(value);
        return value;
    }

private:
    void passAttribute(Mox2::Attributes& attributes, std::string const& name)
    {
        switch (take<AttributeType>()) {
        case AttributeType::Float:
            return attributes.set(name, take<float>());
        case AttributeType::Int:
            return attributes.set(name, take<int>());
        case AttributeType::UnsignedInt:
            return attributes.set(name, take<unsigned int>());
        case AttributeType::Text:
            return attributes.set(name, take<std::string>());
        case AttributeType::Long:
            return attributes.set(name, take<long>());
        }
        throw std::logic_error("an attribute of a type that can't be stored");
    }

    void passProperty(Mox2::NodeProperties& properties, Mox2::PropertyType type)
    {
        // Properties of other types are refused on the rank that says them.
        if (take<std::uint8_t>() == NumberProperty)
            properties.set(type, take<float>());
        else
            properties.set(type, take<std::vector<float>>());
    }

    Inbox& from_;
};

void CallEncoder::put(NodeCall const& call)
{
    Parts parts(to_);
    parts.pass(CallKind::Node);
    passNode(parts, call);
}

void CallEncoder::put(NodeDataCall const& call)
{
    Parts parts(to_);
    parts.pass(CallKind::NodeData);
    passNodeData(parts, call);
}

void CallEncoder::put(ArrayCall const& call)
{
    Parts parts(to_);
    parts.pass(CallKind::Array);
    passArray(parts, call);
}

void CallEncoder::putValues(Mox2::ArrayView const& values)
{
    visitStored(values, [this](void const* bytes, std::size_t count) { to_.put(bytes, count); });
}

CallKind CallDecoder::takeKind()
{
    return Parts(from_).take<CallKind>();
}

NodeCall CallDecoder::takeNode()
{
    NodeCall call;
    Parts parts(from_);
    passNode(parts, call);
    return call;
}

NodeDataCall CallDecoder::takeNodeData()
{
    NodeDataCall call;
    Parts parts(from_);
    passNodeData(parts, call);
    return call;
}

ArrayCall CallDecoder::takeArray()
{
    ArrayCall call;
    Parts parts(from_);
    passArray(parts, call);
    return call;
}

} // namespace Mpi
} // namespace Zyl2
