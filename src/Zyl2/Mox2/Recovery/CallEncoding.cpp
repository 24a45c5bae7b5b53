// Payloads of the records of calls, behind the kind, 1, and the id of the current node, 4:
//
//     addNode                type, 4 | name, string | attributes
//     setNodeData            id, 4 | properties | attributes
//     addAssemblyComponents  separator, string | count, 8 | paths, each a string
//                            separator, string | count, 8 | paths with attributes
//     addArrayProperty       name, string | type, 4 | element, 1 | rows, 8 | columns, 8
//                            | count, 8 | ids, 4 each | count, 8 | steps, each a string and
//                            attributes | attributes
//
//     attributes             count, 4 | entries: name, string | alternative, 1 | value
//     properties             count, 4 | entries: type, 4 | alternative, 1 | value
//     value                  a number: its bytes; a text: count, 4, and characters; a vector:
//     count,
//                            4, and elements

#include "Zyl2/Mox2/Recovery/CallEncoding.h"

#include "Zyl2/Mox2/AttributeMap.h"
#include "Zyl2/Mox2/PropertyMap.h"

#include <boost/variant/static_visitor.hpp>

#include <algorithm>
#include <array>
#include <limits>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

namespace {

class ValueWriter : public boost::static_visitor<void>
{
public:
    explicit ValueWriter(ByteWriter& to) : to_(&to) {}

    template <typename T>
    void operator()(T const& value) const
    {
        to_->put(value);
    }

private:
    ByteWriter* to_;
};

template <typename ValueT>
void writeValue(ByteWriter& to, ValueT const& value)
{
    to.put(static_cast<std::uint8_t>(value.which()));
    boost::apply_visitor(ValueWriter(to), value);
}

void write(ByteWriter& to, AttributeMap const& attributes)
{
    to.count(attributes.size());
    for (auto const& [name, value] : attributes) {
        to.put(name);
        writeValue(to, value);
    }
}

void write(ByteWriter& to, Attributes const& attributes)
{
    write(to, attributes.map());
}

template <typename ArrayT>
Zyl2Mox::ElementCode elementOf(Data::StoredArray<ArrayT> const& /*array*/)
{
    return std::is_same_v<typename ArrayT::Scalar, float> ? Zyl2Mox::ElementCode::Float
                                                          : Zyl2Mox::ElementCode::UnsignedInt;
}

Zyl2Mox::ElementCode elementOf(ArrayView const& view)
{
    bool const isFloating = view.element() == ArrayView::Element::Float32 ||
                            view.element() == ArrayView::Element::Float64;
    return isFloating ? Zyl2Mox::ElementCode::Float : Zyl2Mox::ElementCode::UnsignedInt;
}

template <typename ArrayT>
std::int64_t columnsOf(Data::StoredArray<ArrayT> const& array)
{
    return array.cols();
}

std::int64_t counted(std::size_t count)
{
    constexpr std::size_t largest = std::numeric_limits<std::int64_t>::max();
    return static_cast<std::int64_t>(std::min(count, largest));
}

std::int64_t columnsOf(ArrayView const& view)
{
    return counted(view.columns());
}

template <typename ValueT, typename T>
ValueT readAs(ByteReader& from)
{
    return ValueT(from.get<T>());
}

template <typename ValueT, typename... Ts>
ValueT readValue(ByteReader& from)
{
    // In the order of the alternatives.
    static constexpr std::array<ValueT (*)(ByteReader&), sizeof...(Ts)> readers{
        readAs<ValueT, Ts>...};
    auto const alternative = from.get<std::uint8_t>();
    if (alternative >= readers.size())
        throw DamagedRecord();
    return readers[alternative](from);
}

AttributeValue readAttribute(ByteReader& from)
{
    return readValue<AttributeValue, float, std::vector<float>, int, std::vector<int>, unsigned int,
                     std::vector<unsigned int>, std::string, std::vector<std::string>, std::wstring,
                     std::vector<std::wstring>, double, std::vector<double>, unsigned long,
                     std::vector<unsigned long>, long, std::vector<long>, bool, std::vector<bool>,
                     unsigned char, std::vector<unsigned char>, signed char,
                     std::vector<signed char>, unsigned short, std::vector<unsigned short>, short,
                     std::vector<short>>(from);
}

AttributeMap readMap(ByteReader& from)
{
    AttributeMap attributes;
    for (std::size_t left = from.count(); left != 0; --left) {
        std::string const name = from.get<std::string>();
        attributes[name] = readAttribute(from);
    }
    return attributes;
}

Attributes readAttributes(ByteReader& from)
{
    return Attributes(readMap(from));
}

class PropertySetter : public boost::static_visitor<void>
{
public:
    PropertySetter(NodeProperties& properties, PropertyType type)
        : properties_(&properties), type_(type)
    {}

    template <typename T>
    void operator()(T const& value) const
    {
        properties_->set(type_, value);
    }

private:
    NodeProperties* properties_;
    PropertyType type_;
};

NodeProperties readProperties(ByteReader& from)
{
    NodeProperties properties;
    for (std::size_t left = from.count(); left != 0; --left) {
        auto const type = static_cast<PropertyType>(from.get<std::uint32_t>());
        auto const value =
            readValue<PropertyValue, int, float, std::string, std::vector<int>, std::vector<float>>(
                from);
        boost::apply_visitor(PropertySetter(properties, type), value);
    }
    return properties;
}

ComponentArray readIds(ByteReader& from)
{
    std::size_t const count = from.wideCount(sizeof(std::uint32_t));
    ComponentArray ids(static_cast<Eigen::Index>(count));
    for (unsigned int& id : ids)
        id = from.get<std::uint32_t>();
    return ids;
}

std::vector<StepData> readSteps(ByteReader& from)
{
    std::vector<StepData> steps;
    for (std::size_t left = from.wideCount(); left != 0; --left) {
        StepData step;
        step.name = from.get<std::string>();
        step.attributes = readMap(from);
        steps.push_back(std::move(step));
    }
    return steps;
}

void writeHead(ByteWriter& to, std::string const& separator, std::size_t count)
{
    to.put(separator);
    to.put(std::uint64_t(count));
}

} // namespace

void write(ByteWriter& to, Adder::Node const& command)
{
    to.put(static_cast<std::int32_t>(command.getType()));
    to.put(command.getName());
    write(to, command.getAttributes());
}

void write(ByteWriter& to, Modifier::NodeData const& command)
{
    to.put(std::uint32_t(command.getId()));
    auto const& properties = command.getProperties().map();
    to.count(properties.size());
    for (auto const& [type, value] : properties) {
        to.put(static_cast<std::uint32_t>(type));
        writeValue(to, value);
    }
    write(to, command.getAttributes());
}

void write(ByteWriter& to,
           Adder::Components<std::vector<std::string>, ComponentArray> const& command)
{
    writeHead(to, command.separator, command.paths.size());
    for (std::string const& path : command.paths)
        to.put(path);
}

void write(ByteWriter& to,
           Adder::Components<std::map<std::string, Attributes>, ComponentArray> const& command)
{
    writeHead(to, command.separator, command.paths.size());
    for (auto const& [path, attributes] : command.paths) {
        to.put(path);
        write(to, attributes);
    }
}

template <typename DatasetT>
void write(ByteWriter& to,
           Adder::ArrayProperty<DatasetT, ComponentArray, std::vector<StepData>> const& command)
{
    auto const& dataset = command.dataset;
    to.put(dataset.name);
    to.put(static_cast<std::uint32_t>(dataset.type));
    to.put(static_cast<std::uint8_t>(elementOf(dataset.array)));
    to.put(counted(static_cast<std::size_t>(dataset.array.rows())));
    to.put(columnsOf(dataset.array));
    to.put(static_cast<std::uint64_t>(command.components.size()));
    to.bytes(command.components.data(),
             static_cast<std::size_t>(command.components.size()) * sizeof(unsigned int));
    to.put(std::uint64_t(command.steps.size()));
    for (StepData const& step : command.steps) {
        to.put(step.name);
        write(to, step.attributes);
    }
    write(to, dataset.attributes);
}

template <typename ArrayT>
using AdderOf = Adder::ArrayPropertyOf<ArrayT>;
template void write(ByteWriter&, AdderOf<Array1d<float>> const&);
template void write(ByteWriter&, AdderOf<Array1d<unsigned int>> const&);
template void write(ByteWriter&, AdderOf<Array2d<float>> const&);
template void write(ByteWriter&, AdderOf<Array2d<unsigned int>> const&);
template void
write(ByteWriter&,
      Adder::ArrayProperty<ViewedDataset, ComponentArray, std::vector<StepData>> const&);

NodeCall::NodeCall(ByteReader& from)
    : type(static_cast<NodeType>(from.get<std::int32_t>())), name(from.get<std::string>()),
      attributes(readAttributes(from))
{
    from.expectEnd();
}

NodeDataCall::NodeDataCall(ByteReader& from)
    : id(from.get<std::uint32_t>()), properties(readProperties(from)),
      attributes(readAttributes(from))
{
    from.expectEnd();
}

PathsCall::PathsCall(ByteReader& from) : separator(from.get<std::string>())
{
    std::size_t const count = from.wideCount(sizeof(std::uint32_t));
    paths.reserve(count);
    for (std::size_t path = 0; path < count; ++path)
        paths.push_back(from.get<std::string>());
    from.expectEnd();
}

ComponentsCall::ComponentsCall(ByteReader& from) : separator(from.get<std::string>())
{
    for (std::size_t left = from.wideCount(); left != 0; --left) {
        std::string const path = from.get<std::string>();
        components[path] = readAttributes(from);
    }
    from.expectEnd();
}

ArrayCall::ArrayCall(ByteReader& from)
    : name(from.get<std::string>()), type(static_cast<DatasetType>(from.get<std::uint32_t>())),
      element(static_cast<Zyl2Mox::ElementCode>(from.get<std::uint8_t>())),
      rows(from.get<std::int64_t>()), columns(from.get<std::int64_t>()), components(readIds(from)),
      steps(readSteps(from)), attributes(readAttributes(from))
{
    from.expectEnd();
    if (element != Zyl2Mox::ElementCode::Float && element != Zyl2Mox::ElementCode::UnsignedInt)
        throw DamagedRecord();
}

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2
