#include "ModelWriter.h"

#include "StepAttributes.h"

#include <cmath>
#include <limits>
#include <map>

namespace Frd {

namespace {

using Zyl2::Mox2::Array1d;
using Zyl2::Mox2::Array2d;
using Zyl2::Mox2::Attributes;
using Zyl2::Mox2::DatasetType;
using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::SaverOptions;
using Zyl2::Mox2::Step;

constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();

/// The conversion is undefined for what float can't hold; such values become infinite.
float narrowed(double value)
{
    if (std::isfinite(value) && std::fabs(value) > std::numeric_limits<float>::max())
        return std::copysign(std::numeric_limits<float>::infinity(), value > 0 ? 1.0F : -1.0F);
    return static_cast<float>(value);
}

std::string attributeName(std::string const& fieldName)
{
    static std::map<std::string, std::string> const names = {{"COMPILETIME", "SolverCompileTime"},
                                                             {"DATE", "Date"},
                                                             {"DBN", "Database"},
                                                             {"DIR", "Directory"},
                                                             {"HOST", "Host"},
                                                             {"PGM", "Solver"},
                                                             {"TIME", "Time"},
                                                             {"USER", "User"},
                                                             {"VERSION", "SolverVersion"}};
    return names.at(fieldName);
}

Attributes rootAttributes(ModelWriter::Source const& source)
{
    Attributes attributes;
    attributes.set("Source", source.fileName);
    for (auto const& [name, value] : source.header.fields)
        attributes.set(attributeName(name), value);
    for (std::size_t i = 0; i < source.header.titles.size(); ++i)
        attributes.set(i == 0 ? "Title" : "Title " + std::to_string(i + 1),
                       source.header.titles[i]);
    return attributes;
}

Attributes elementAttributes(Shape const& shape)
{
    Attributes attributes;
    attributes.set("GroupNumber", static_cast<int>(shape.group));
    attributes.set("MaterialNumber", static_cast<int>(shape.material));
    if (!shape.materialName.empty())
        attributes.set("MaterialName", shape.materialName);
    return attributes;
}

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

DatasetType resultType(ResultLayout::Kind kind)
{
    switch (kind) {
    case ResultLayout::Kind::Vector:
        return DatasetType::Result11;
    case ResultLayout::Kind::Displacement:
        return DatasetType::Displacement;
    case ResultLayout::Kind::Tensor:
        return DatasetType::Result13;
    default:
        return DatasetType::Result10;
    }
}

} // namespace

ModelWriter::ModelWriter(Source const& source, std::filesystem::path const& path,
                         std::string const& application)
    : mesh_(source.mesh), shapes_(partition(source.mesh, source.header))
{
    SaverOptions options;
    options.overwrite = true;
    options.text1 = application;
    options.text2 = source.fileName;
    model_.saveTo(path.string(), options);
    addRoot(source);
    for (Shape const& shape : shapes_)
        addShape(shape);
}

ModelWriter::~ModelWriter()
{
    try {
        model_.close();
    } catch (std::exception const&) {
        // The failure that led here is the one to report; the model is closed all the same.
    }
}

void ModelWriter::addRoot(Source const& source)
{
    std::string const& given = source.header.modelName;
    std::string const name =
        given.empty() ? std::filesystem::path(source.fileName).stem().string() : given;
    root_ = model_.addNode(NodeType::RootGroup, name, rootAttributes(source));
}

void ModelWriter::addShape(Shape const& shape)
{
    model_.setCurrentNodeId(root_);
    ids_.push_back(model_.addNode(NodeType::Shape, shape.name));
    addNodes(shape);
    if (!shape.elements.empty())
        addElements(shape);
}

void ModelWriter::addNodes(Shape const& shape)
{
    Array2d<float> coordinates(shape.nodes.size(), 3);
    Array1d<unsigned int> ids(shape.nodes.size());
    for (std::size_t row = 0; row < shape.nodes.size(); ++row) {
        Node const& node = mesh_.nodes()[shape.nodes[row]];
        ids[row] = node.id;
        for (std::size_t axis = 0; axis < 3; ++axis)
            coordinates(row, axis) = narrowed(node.coordinates[axis]);
    }
    model_.addArrayProperty(DatasetType::Coordinates, coordinates, ids_.back(), Step());
    model_.addArrayProperty(DatasetType::NodeIds, ids, ids_.back(), Step());
}

void ModelWriter::addElements(Shape const& shape)
{
    std::vector<std::uint32_t> const rows = rowsOf(shape);
    std::vector<unsigned int> connectivity;
    std::vector<unsigned int> polylength;
    std::vector<unsigned int> ids;
    for (std::size_t const i : shape.elements) {
        Element const& element = mesh_.elements()[i];
        ids.push_back(element.id);
        polylength.push_back(static_cast<unsigned int>(element.type->nodeCount));
        for (std::size_t const position : element.type->modelOrder)
            connectivity.push_back(rows[mesh_.nodeOf(element, position)]);
    }
    Attributes const attributes = elementAttributes(shape);
    unsigned int const id = ids_.back();
    model_.addArrayProperty(connectivityType(shape.dimension), Array1d<unsigned int>(connectivity),
                            id, Step(), attributes);
    model_.addArrayProperty(polylengthType(shape.dimension), Array1d<unsigned int>(polylength), id,
                            Step());
    model_.addArrayProperty(DatasetType::ElementIds, Array1d<unsigned int>(ids), id, Step());
}

std::vector<std::uint32_t> ModelWriter::rowsOf(Shape const& shape) const
{
    std::vector<std::uint32_t> rows(mesh_.nodes().size(), nowhere);
    for (std::size_t row = 0; row < shape.nodes.size(); ++row)
        rows[shape.nodes[row]] = static_cast<std::uint32_t>(row);
    return rows;
}

void ModelWriter::addResult(ResultBlock const& block)
{
    ++resultCount_;
    findPlaces(block);
    for (ResultLayout const& layout : layoutsOf(block))
        addLayout(block, layout);
}

void ModelWriter::findPlaces(ResultBlock const& block)
{
    places_.assign(mesh_.nodes().size(), nowhere);
    for (std::size_t i = 0; i < block.nodes.size(); ++i)
        places_[block.nodes[i]] = static_cast<std::uint32_t>(i);
}

void ModelWriter::addLayout(ResultBlock const& block, ResultLayout const& layout)
{
    std::string const name = names_.resultName(block, layout.name);
    Step const step(names_.stepName(block), stepAttributes(block));
    DatasetType const type = resultType(layout.kind);
    for (std::size_t i = 0; i < shapes_.size(); ++i) {
        std::vector<float> const values = valuesOn(shapes_[i], block, layout);
        if (layout.components.size() == 1)
            model_.addArrayProperty(name, type, Array1d<float>(values), ids_[i], step);
        else
            model_.addArrayProperty(
                name, type,
                Array2d<float>(shapes_[i].nodes.size(), layout.components.size(), values), ids_[i],
                step);
    }
}

std::vector<float> ModelWriter::valuesOn(Shape const& shape, ResultBlock const& block,
                                         ResultLayout const& layout) const
{
    std::size_t const stored = block.nodes.empty() ? 0 : block.values.size() / block.nodes.size();
    std::vector<float> values;
    values.reserve(shape.nodes.size() * layout.components.size());
    for (std::uint32_t const node : shape.nodes) {
        std::uint32_t const place = places_[node];
        for (std::size_t const component : layout.components)
            values.push_back(place == nowhere ? std::numeric_limits<float>::quiet_NaN()
                                              : narrowed(block.values[place * stored + component]));
    }
    return values;
}

void ModelWriter::close()
{
    model_.close();
}

} // namespace Frd
