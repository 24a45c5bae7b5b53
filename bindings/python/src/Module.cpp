#include "BufferView.h"
#include "Failures.h"
#include "Options.h"
#include "SharedModel.h"
#include "model/FileCalls.h"

#include <Zyl2/Version.h>

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Python {

namespace {

namespace py = pybind11;
using namespace Zyl2::Mox2;
using Bindings::ModelCalls;

using Text = std::string;
using Entries = std::vector<std::pair<Text, py::object>>;
using PropertyEntries = std::vector<std::pair<unsigned int, py::object>>;
using NamedEntries = std::vector<std::pair<Text, Entries>>;

/// The list is of Python's integers or of its floats; of no type when it is empty.
template <typename SetterT>
void setList(py::list const& values, SetterT const& set)
{
    if (!values.empty() && py::isinstance<py::int_>(values[0]))
        set(values.cast<std::vector<int>>());
    else
        set(values.cast<std::vector<float>>());
}

/// Calls `set` with the value in the type of C++ that stands for its type.
template <typename SetterT>
void setScalar(py::handle value, SetterT const& set)
{
    if (py::isinstance<py::bytes>(value))
        set(value.cast<Text>());
    else if (py::isinstance<py::bool_>(value))
        set(value.cast<bool>());
    else if (py::isinstance<py::float_>(value))
        set(value.cast<double>());
    else
        set(value.cast<int>());
}

Attributes attributesOf(Entries const& entries)
{
    Attributes attributes;
    for (auto const& entry : entries)
        setScalar(entry.second, [&](auto const& value) { attributes.set(entry.first, value); });
    return attributes;
}

NodeProperties propertiesOf(PropertyEntries const& entries)
{
    NodeProperties properties;
    for (auto const& entry : entries) {
        auto const set = [&](auto const& value) {
            properties.set(static_cast<PropertyType>(entry.first), value);
        };
        if (py::isinstance<py::list>(entry.second))
            setList(py::reinterpret_borrow<py::list>(entry.second), set);
        else
            setScalar(entry.second, set);
    }
    return properties;
}

StepList stepsOf(NamedEntries const& entries)
{
    StepList steps(entries.size());
    unsigned long index = 0;
    for (auto const& entry : entries)
        steps.set(index++, Step(entry.first, attributesOf(entry.second)));
    return steps;
}

std::vector<unsigned int> listOf(Array1d<unsigned int> const& ids)
{
    return std::vector<unsigned int>(ids.data(), ids.data() + ids.size());
}

void saveTo(SharedModel& model, Text const& path, Options const& options)
{
    model.write([&](ModelCalls& open) { open.saveTo(path, saverOptionsOf(options)); });
}

unsigned int addNode(SharedModel& model, int type, Text const& name, Entries const& attributes)
{
    return model.run([&](ModelCalls& open) {
        return open.addNode(static_cast<NodeType>(type), name, attributesOf(attributes));
    });
}

void setNodeData(SharedModel& model, unsigned int id, PropertyEntries const& properties,
                 Entries const& attributes)
{
    model.run([&](ModelCalls& open) {
        open.setNodeData(id, propertiesOf(properties), attributesOf(attributes));
    });
}

std::vector<unsigned int> addComponents(SharedModel& model, std::vector<Text> const& paths,
                                        Text const& separator)
{
    return model.run(
        [&](ModelCalls& open) { return listOf(open.addAssemblyComponents(paths, separator)); });
}

std::vector<unsigned int> addComponentsWithAttributes(SharedModel& model, NamedEntries const& paths,
                                                      Text const& separator)
{
    std::map<Text, Attributes> components;
    for (auto const& path : paths)
        components[path.first] = attributesOf(path.second);
    return model.run([&](ModelCalls& open) {
        return listOf(open.addAssemblyComponents(components, separator));
    });
}

void addArrayProperty(SharedModel& model, std::optional<Text> const& name, unsigned int type,
                      py::handle values, std::vector<unsigned int> const& components,
                      NamedEntries const& steps, Entries const& attributes)
{
    BufferView const buffer(values.ptr());
    StepList const stepList = stepsOf(steps);
    Attributes const given = attributesOf(attributes);
    auto const datasetType = static_cast<DatasetType>(type);
    model.write([&](ModelCalls& open) {
        open.addArray(name ? &*name : nullptr, datasetType, buffer.view(), components, stepList,
                      given);
    });
}

std::tuple<std::uintptr_t, unsigned int, std::size_t, std::size_t, std::ptrdiff_t, std::ptrdiff_t>
describe(py::handle values)
{
    ArrayView const view = BufferView(values.ptr()).view();
    return {reinterpret_cast<std::uintptr_t>(view.data()),
            static_cast<unsigned int>(view.element()),
            view.rows(),
            view.columns(),
            view.rowStride(),
            view.columnStride()};
}

} // namespace

} // namespace Python

PYBIND11_MODULE(_writer, module)
{
    using Bindings::ModelCalls;
    using Python::SharedModel;
    using Text = Python::Text;

    pybind11::register_local_exception_translator(Python::translate);

    module.def("version", [] { return Zyl2::versionString(); });
    module.def("view", Python::describe);

    pybind11::class_<SharedModel>(module, "Model")
        .def(pybind11::init(
            [] { return std::make_unique<SharedModel>(std::make_unique<Bindings::FileCalls>()); }))
        .def("save_to", Python::saveTo)
        .def("add_node", Python::addNode)
        .def("set_node_data", Python::setNodeData)
        .def("get_node_id",
             [](SharedModel& model, Text const& path, Text const& separator) {
                 return model.run(
                     [&](ModelCalls& open) { return open.getNodeId(path, separator); });
             })
        .def("get_node_id_of_names",
             [](SharedModel& model, std::vector<Text> const& names) {
                 return model.run([&](ModelCalls& open) { return open.getNodeId(names); });
             })
        .def("set_current_node_id",
             [](SharedModel& model, unsigned int id) {
                 model.run([&](ModelCalls& open) { open.setCurrentNodeId(id); });
             })
        .def("move_to_parent_node",
             [](SharedModel& model) {
                 return model.run([](ModelCalls& open) { return open.moveToParentNode(); });
             })
        .def("add_components", Python::addComponents)
        .def("add_components_with_attributes", Python::addComponentsWithAttributes)
        .def("add_array_property", Python::addArrayProperty)
        .def("checkpoint",
             [](SharedModel& model) {
                 bool isOnDisk = false;
                 model.write([&](ModelCalls& open) { isOnDisk = open.checkpoint(); });
                 return isOnDisk;
             })
        .def("waited_seconds",
             [](SharedModel& model) {
                 return model.run([](ModelCalls const& open) { return open.waitedSeconds(); });
             })
        .def("close",
             [](SharedModel& model) { model.write([](ModelCalls& open) { open.close(); }); });
}
