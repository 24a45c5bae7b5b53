#include "ModelWriter.h"

#include "ModelAttributes.h"
#include "RecordSeparator.h"
#include "StepAttributes.h"

#include <algorithm>
#include <exception>
#include <limits>

namespace Exchange {

namespace {

using Zyl2::Mox2::Attributes;
using Zyl2::Mox2::DatasetType;
using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::SaverOptions;
using Zyl2::Mox2::Step;

DatasetType connectivityType(int dimension)
{
    if (dimension == 1)
        return DatasetType::Connectivity1;
    return dimension == 2 ? DatasetType::Connectivity2 : DatasetType::Connectivity3;
}

DatasetType polylengthType(int dimension)
{
    if (dimension == 1)
        return DatasetType::Polylength1;
    return dimension == 2 ? DatasetType::Polylength2 : DatasetType::Polylength3;
}

bool areUsable(std::vector<std::int64_t> const& ids, std::int64_t smallest)
{
    return std::all_of(ids.begin(), ids.end(), [smallest](std::int64_t id) {
        return id >= smallest && id <= std::numeric_limits<std::uint32_t>::max();
    });
}

/// Null when there are none, or when a model can't hold them.
std::vector<std::int64_t> const* usableIds(std::vector<std::int64_t> const& ids,
                                           std::string const& whose, Part const& part,
                                           Report& report)
{
    if (ids.empty())
        return nullptr;
    if (areUsable(ids, part.smallestId))
        return &ids;
    report.warn("Numbers of the " + whose + " of '" + part.name +
                "' don't fit into a model; they are numbered 1, 2, 3 and so on.");
    return nullptr;
}

void fillIds(std::vector<std::int64_t> const* ids, RowSelection const& rows, unsigned int* to)
{
    for (std::size_t i = 0; i < rows.size(); ++i)
        to[i] = static_cast<unsigned int>(ids == nullptr ? static_cast<std::int64_t>(rows[i]) + 1
                                                         : (*ids)[rows[i]]);
}

/// For each node of the part, its row in the shape.
std::vector<std::uint32_t> rowsInShape(Part const& part, RowSelection const& nodes)
{
    std::vector<std::uint32_t> rows(part.nodeCount());
    for (std::size_t i = 0; i < nodes.size(); ++i)
        rows[nodes[i]] = static_cast<std::uint32_t>(i);
    return rows;
}

std::size_t connectivitySize(Part const& part, RowSelection const& elements)
{
    if (elements.isAll())
        return part.connectivity.size();
    std::size_t size = 0;
    for (std::size_t i = 0; i < elements.size(); ++i)
        size += part.offsets[elements[i] + 1] - part.offsets[elements[i]];
    return size;
}

void copyConnectivity(Part const& part, RowSelection const& elements, unsigned int* to)
{
    if (elements.isAll()) {
        std::copy(part.connectivity.begin(), part.connectivity.end(), to);
        return;
    }
    for (std::size_t i = 0; i < elements.size(); ++i)
        for (std::uint64_t n = part.offsets[elements[i]]; n < part.offsets[elements[i] + 1]; ++n)
            *to++ = part.connectivity[n];
}

AttributeList connectivityAttributes(Part const& part, Shape const& shape)
{
    AttributeList attributes = part.attributes;
    if (shape.type != nullptr)
        attributes.emplace_back("ElementType", shape.type->name);
    return attributes;
}

AttributeList rootAttributes(std::string const& sourceName, AttributeList const& given)
{
    AttributeList attributes = {{"Source", sourceName}};
    attributes.insert(attributes.end(), given.begin(), given.end());
    return attributes;
}

} // namespace

ModelWriter::ModelWriter(std::filesystem::path const& path, Signature const& signature,
                         AttributeList const& attributes, Report& report)
    : report_(report), writer_(model_), fields_(writer_, report)
{
    SaverOptions options;
    options.overwrite = true;
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
    addNodes(part, shape, id);
    addNodeIds(part, shape, id);
    if (shape.elements.size() != 0)
        addElements(part, shape, id);
    return {id, shape.nodes, shape.elements};
}

void ModelWriter::addNodes(Part const& part, Shape const& shape, unsigned int id)
{
    bool const carriesAttributes = part.types.empty();
    writer_.add<float>(
        {"Coordinates", DatasetType::Coordinates, shape.nodes.size(), 3, id},
        [&](float* to) {
            for (std::size_t i = 0; i < shape.nodes.size(); ++i)
                for (std::size_t axis = 0; axis < 3; ++axis)
                    *to++ = report_.narrow(part.coordinates[shape.nodes[i] * 3 + axis]);
        },
        Step(), datasetAttributes(carriesAttributes ? part.attributes : AttributeList(), report_));
}

void ModelWriter::addNodeIds(Part const& part, Shape const& shape, unsigned int id)
{
    auto const* const ids = usableIds(part.nodeIds, "nodes", part, report_);
    writer_.add<unsigned int>({"Node Ids", DatasetType::NodeIds, shape.nodes.size(), 1, id},
                              [&](unsigned int* to) { fillIds(ids, shape.nodes, to); });
}

void ModelWriter::addElements(Part const& part, Shape const& shape, unsigned int id)
{
    addConnectivity(part, shape, id);
    writer_.add<unsigned int>(
        {"Polylength", polylengthType(shape.dimension), shape.elements.size(), 1, id},
        [&](unsigned int* to) {
            for (std::size_t i = 0; i < shape.elements.size(); ++i) {
                std::size_t const element = shape.elements[i];
                to[i] =
                    static_cast<unsigned int>(part.offsets[element + 1] - part.offsets[element]);
            }
        });
    addElementIds(part, shape, id);
}

void ModelWriter::addConnectivity(Part const& part, Shape const& shape, unsigned int id)
{
    std::size_t const size = connectivitySize(part, shape.elements);
    writer_.add<unsigned int>(
        {"Connectivity", connectivityType(shape.dimension), size, 1, id},
        [&](unsigned int* to) {
            copyConnectivity(part, shape.elements, to);
            if (shape.nodes.isAll())
                return;
            std::vector<std::uint32_t> const rows = rowsInShape(part, shape.nodes);
            std::for_each(to, to + size, [&rows](unsigned int& node) { node = rows[node]; });
        },
        Step(), datasetAttributes(connectivityAttributes(part, shape), report_));
}

void ModelWriter::addElementIds(Part const& part, Shape const& shape, unsigned int id)
{
    auto const* const ids = usableIds(part.elementIds, "elements", part, report_);
    writer_.add<unsigned int>(
        {"Element IDs", DatasetType::ElementIds, shape.elements.size(), 1, id},
        [&](unsigned int* to) { fillIds(ids, shape.elements, to); });
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
