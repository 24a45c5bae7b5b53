#include "threads/NumberedModel.h"

#include <Zyl2/Exception/Exception.h>

#include <map>
#include <utility>

namespace Threads {

namespace {

using namespace Zyl2::Mox2;
using Integration::ArrayCall;
using Integration::Element;
using Integration::NamedStep;
using Integration::Values;

/// Every mixture of the choices that addArrayProperty leaves to a host: one bit for each.
enum Form : unsigned int
{
    Unsigned = 1,
    Column = 2,
    SingleId = 4,
    SingleStep = 8,
    Named = 16,
    FormEnd = 32
};

constexpr unsigned int callsPerForm = 3;

bool has(unsigned int form, Form choice)
{
    return (form & choice) != 0;
}

Attributes numbered(unsigned int number)
{
    Attributes attributes;
    attributes.set("Number", number);
    attributes.set("Text", "text of " + std::to_string(number));
    attributes.set("Share", 1.0 / (number + 1.0));
    return attributes;
}

} // namespace

NumberedModel::NumberedModel(unsigned int number, std::string path)
    : number_(number), path_(std::move(path)), random_(number)
{}

std::vector<std::function<void()>> NumberedModel::lifeSteps()
{
    return {[this] { open(); },          [this] { addNodes(); },  [this] { addComponents(); },
            [this] { describeNodes(); }, [this] { addArrays(); }, [this] { failOnPurpose(); },
            [this] { model_.close(); }};
}

void NumberedModel::write()
{
    for (std::function<void()> const& step : lifeSteps())
        step();
}

void NumberedModel::open()
{
    SaverOptions options;
    options.text1 = signature();
    model_.saveTo(path_, options);
}

void NumberedModel::addNodes()
{
    model_.addNode(NodeType::RootGroup, "root", numbered(number_));
    // Each number has its own count of nodes, so that equal calls give different ids.
    for (unsigned int part = 0; part < number_ + 2; ++part) {
        model_.setCurrentNodeId(1);
        model_.addNode(NodeType::Group, "part " + std::to_string(part), numbered(part));
        shapes_.push_back(model_.addNode(NodeType::Shape, "hull"));
        model_.moveToParentNode();
        model_.moveToParentNode();
        shapes_.push_back(model_.addNode(NodeType::Shape, "core"));
    }
}

void NumberedModel::addComponents()
{
    std::string const own = "own " + std::to_string(number_);
    std::vector<std::string> const paths{"/root/" + own + "/left", "/root/" + own + "/right"};
    Array1d<unsigned int> const ids = model_.addAssemblyComponents(paths);
    shapes_.insert(shapes_.end(), {ids[0], ids[1]});
    std::map<std::string, Attributes> const components{{"|root|" + own + "|", numbered(number_)},
                                                       {"|root|part 0|lid", numbered(number_)}};
    shapes_.push_back(model_.addAssemblyComponents(components, "|")[1]);
}

void NumberedModel::describeNodes()
{
    auto const number = static_cast<float>(number_);
    NodeProperties transform;
    transform.set(PropertyType::Translation, std::vector<float>{number, 2.0F, 3.0F});
    transform.set(PropertyType::Scale, std::vector<float>{1.0F, number, 1.0F});
    model_.setNodeData(model_.getNodeId("/root/part 1"), transform, numbered(number_ + 1));
    model_.setNodeData(model_.getNodeId({"root", "own " + std::to_string(number_)}), transform);
    for (unsigned int const shape : shapes_) {
        NodeProperties material;
        material.set(PropertyType::DiffuseColor,
                     std::vector<float>{1.0F / number, 0.5F, 1.0F / static_cast<float>(shape)});
        material.set(PropertyType::Transparency, 1.0F / number);
        model_.setNodeData(shape, material);
    }
}

void NumberedModel::addArrays()
{
    for (unsigned int count = 0; count < callsPerForm; ++count)
        for (unsigned int form = 0; form < FormEnd; ++form)
            arrayCall(form).run(model_);
}

void NumberedModel::failOnPurpose()
{
    expectFailure([this] { model_.saveTo(path_); });
    expectFailure([this] { model_.addNode(NodeType::RootGroup, "second root"); });
    expectFailure([this] { model_.setCurrentNodeId(1000 + number_); });
    expectFailure([this] { model_.addAssemblyComponents({"relative/path"}); });
    expectFailure([this] { Model().saveTo("/no/such/folder/" + signature()); });
    expectFailure([this] {
        model_.addArrayProperty(DatasetType::NodeIds, Array1d<unsigned int>{number_},
                                1000 + number_, Step());
    });
}

ArrayCall NumberedModel::arrayCall(unsigned int form)
{
    bool const column = has(form, Column);
    ArrayCall call;
    call.type = column ? DatasetType::NodeIds : DatasetType::Displacement;
    call.values = Values::anyBits(random_, has(form, Unsigned) ? Element::Uint32 : Element::Float,
                                  column ? 1 : 3, 20 + random_.below(20));
    call.ids = someShapes(has(form, SingleId));
    call.steps = someSteps(has(form, SingleStep));
    if (has(form, Named))
        call.name = "form " + std::to_string(form);
    call.attributes.set("Form", form);
    call.asColumn = column;
    call.asSingleId = has(form, SingleId);
    call.asSingleStep = has(form, SingleStep);
    return call;
}

std::vector<unsigned int> NumberedModel::someShapes(bool single)
{
    std::vector<unsigned int> ids{random_.pick(shapes_)};
    if (!single)
        ids.insert(ids.end(), {random_.pick(shapes_), random_.pick(shapes_)});
    return ids;
}

std::vector<NamedStep> NumberedModel::someSteps(bool single)
{
    std::vector<NamedStep> steps(single ? 1 : 3);
    for (NamedStep& step : steps) {
        step.name = "step " + std::to_string(++steps_) + " of " + std::to_string(number_);
        step.attributes.set("Time", static_cast<float>(steps_ * number_));
    }
    return steps;
}

void NumberedModel::expectFailure(std::function<void()> const& call)
{
    try {
        call();
        failures_.emplace_back("none");
    } catch (Zyl2::Exception::Exception const& failure) {
        failures_.emplace_back(failure.what());
    }
}

} // namespace Threads
