#include "ModelWriter.h"

#include "ModelAttributes.h"
#include "RecordSeparator.h"
#include "StepAttributes.h"

#include <cstdint>
#include <exception>
#include <utility>

namespace Exchange {

namespace {

using Zyl2::Mox2::Attributes;
using Zyl2::Mox2::DatasetType;
using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::SaverOptions;
using Zyl2::Mox2::Step;

AttributeList rootAttributes(std::string const& sourceName, AttributeList const& given)
{
    AttributeList attributes = {{"Source", sourceName}};
    attributes.insert(attributes.end(), given.begin(), given.end());
    return attributes;
}

} // namespace

ModelWriter::ModelWriter(std::filesystem::path const& path, Signature const& signature,
                         AttributeList const& attributes, Report& report)
    : report_(report), writer_(model_), mesh_(writer_, report), fields_(writer_, report)
{
    SaverOptions options;
    options.overwrite = true;
    // The file goes with the process that makes it, and nobody could recover it.
    options.recoverable = 0;
    options.text1 = signature.application;
    options.text2 = signature.sourceName;
    model_.saveTo(path.string(), options);
    groups_[{}].id =
        model_.addNode(NodeType::RootGroup, signature.rootName,
                       modelAttributes(rootAttributes(signature.sourceName, attributes), report_));
}

ModelWriter::~ModelWriter()
{
    try {
        model_.close();
    } catch (std::exception const&) {
        // The failure that led here is the one to report; the model is closed all the same.
    }
}

ModelWriter::Group& ModelWriter::groupAt(GroupPath const& path)
{
    auto const found = groups_.find(path);
    if (found != groups_.end())
        return found->second;
    Group& parent = groupAt(GroupPath(path.begin(), path.end() - 1));
    model_.setCurrentNodeId(parent.id);
    std::string const name = parent.children.make(withoutRecordSeparator(path.back(), report_));
    Group& group = groups_[path];
    group.id = model_.addNode(NodeType::Group, name);
    return group;
}

void ModelWriter::addPart(Part const& part)
{
    WrittenPart written{part.name, part.nodeCount(), part.elementCount(), {}};
    std::vector<Shape> const shapes = partition(part);
    Group& group = groupAt(part.groups);
    for (Shape const& shape : shapes)
        written.shapes.push_back(addShape(group, part, shape));
    nodeCount_ += written.nodeCount;
    elementCount_ += written.elementCount;
    parts_.push_back(std::move(written));
    addSets(part, parts_.back());
}

WrittenShape ModelWriter::addShape(Group& group, Part const& part, Shape const& shape)
{
    model_.setCurrentNodeId(group.id);
    std::string const name = group.children.make(withoutRecordSeparator(shape.name, report_));
    unsigned int const id = model_.addNode(NodeType::Shape, name);
    mesh_.add(part, shape, id);
    return {id, shape.nodes, shape.elements};
}

void ModelWriter::addSets(Part const& part, WrittenPart const& written)
{
    for (NamedSet const& set : part.nodeSets)
        addSet(set, Location::Nodes, written);
    for (NamedSet const& set : part.elementSets)
        addSet(set, Location::Elements, written);
}

void ModelWriter::addSet(NamedSet const& set, Location location, WrittenPart const& written)
{
    bool const isOnNodes = location == Location::Nodes;
    std::vector<bool> isMember(isOnNodes ? written.nodeCount : written.elementCount);
    for (std::uint32_t const row : set.rows)
        isMember[row] = true;
    std::string const name =
        fields_.names().make(parts_.size() - 1, location,
                             (isOnNodes ? "Node Set " : "Element Set ") + set.name, report_);
    Attributes attributes;
    attributes.set("Category", isOnNodes ? "NodeSet" : "ElementSet");
    DatasetType const type = isOnNodes ? DatasetType::Result10 : DatasetType::Result14;
    for (WrittenShape const& shape : written.shapes) {
        RowSelection const& rows = isOnNodes ? shape.nodes : shape.elements;
        writer_.add<unsigned int>(
            {name, type, rows.size(), 1, shape.id},
            [&](unsigned int* to) {
                for (std::size_t i = 0; i < rows.size(); ++i)
                    to[i] = isMember[rows[i]] ? 1 : 0;
            },
            Step(), attributes);
    }
}

void ModelWriter::startStep(StepInfo const& step)
{
    if (step.name.empty()) {
        fields_.startStep(Step());
        return;
    }
    WrittenStep const written = writtenStep(step);
    fields_.startStep(
        Step(written.name, datasetAttributes(stepAttributes(step, written.number), report_)));
}

ModelWriter::WrittenStep ModelWriter::writtenStep(StepInfo const& step)
{
    std::string const name = withoutRecordSeparator(step.name, report_);
    if (!step.mayGoOn)
        return newStep(name);
    auto const found = openSteps_.find(name);
    return found != openSteps_.end() ? found->second
                                     : openSteps_.emplace(name, newStep(name)).first->second;
}

ModelWriter::WrittenStep ModelWriter::newStep(std::string const& name)
{
    return {stepNames_.make(name), ++stepCount_};
}

void ModelWriter::addField(Field const& field)
{
    if (field.part >= parts_.size())
        throw Error("The field '" + field.name + "' is on a part that is not there.");
    fields_.add(parts_[field.part], field);
}

void ModelWriter::close()
{
    model_.close();
}

} // namespace Exchange
