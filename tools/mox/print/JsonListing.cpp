#include "JsonListing.h"

#include "moxread/NodeVisit.h"

#include <array>
#include <utility>
#include <variant>

namespace Mox {

using MoxRead::Attributes;
using MoxRead::Group;
using MoxRead::Material;
using MoxRead::Node;
using MoxRead::Variable;
using MoxRead::WritingRecord;

namespace {

// What listings call the type of an attribute, by the index of its value's alternative.
constexpr std::array<char const*, 4> attributeTypes = {"uint32", "float", "string", "double"};

void writeAttributes(JsonWriter& json, Attributes const& attributes)
{
    json.key("attributes").beginArray();
    for (auto const& [name, value] : attributes) {
        json.beginObject(JsonWriter::OneLine).member("name", name);
        json.member("type", attributeTypes[value.index()]).key("value");
        std::visit([&](auto const& content) { json.value(content); }, value);
        json.endObject();
    }
    json.endArray();
}

void writeGroup(JsonWriter& json, Group const& group)
{
    json.key("translation").values(group.translation);
    json.key("rotation").values(group.rotation);
    json.key("scale").values(group.scale);
    json.member("flag", group.flag);
    writeAttributes(json, group.attributes);
}

void writeMaterial(JsonWriter& json, Material const& material)
{
    json.key("material").beginObject();
    json.key("diffuse").values(material.diffuse);
    json.key("specular").values(material.specular);
    json.key("emissive").values(material.emissive);
    json.key("ambient").values(material.ambient);
    json.member("transparency", material.transparency);
    json.member("shininess", material.shininess);
    json.member("flag", material.flag).endObject();
}

void writeRange(JsonWriter& json, ValueRange const& range)
{
    json.key("range");
    if (range.hasNumbers())
        json.beginArray(JsonWriter::OneLine);
    if (!range.hasNumbers())
        json.null();
    else if (range.isFloat)
        json.value(static_cast<float>(range.least)).value(static_cast<float>(range.greatest));
    else
        json.value(static_cast<std::uint32_t>(range.least))
            .value(static_cast<std::uint32_t>(range.greatest));
    if (range.hasNumbers())
        json.endArray();
    json.member("notNumbers", range.notNumbers);
}

} // namespace

JsonListing::JsonListing(ModelContents const& contents, std::string file, std::string const* state)
    : contents_(contents), model_(contents.model()), file_(std::move(file)), state_(state)
{}

void JsonListing::print(std::ostream& out) const
{
    JsonWriter json(out);
    json.beginObject();
    writeFile(json);
    writeNodes(json);
    writeSteps(json);
    if (contents_.hasValues())
        writeHeavyData(json);
    json.endObject();
}

void JsonListing::writeFile(JsonWriter& json) const
{
    json.member("file", file_).member("format", "1.3");
    if (state_ != nullptr) {
        json.member("incomplete", *state_);
    } else {
        json.member("bytes", model_.bytes());
        json.member("blockCount", model_.blockCount());
    }
    json.member("nodeCount", model_.nodes().size());
    json.member("datasetCount", model_.variableCount());
    writeWritings(json, model_.globalInformation().writings);
    json.member("resultAttributeCount", model_.globalInformation().resultAttributes.size());
}

void JsonListing::writeNodes(JsonWriter& json) const
{
    json.key("nodes").beginArray();
    MoxRead::visitNodes(model_, contents_.first(),
                        [&](Node const& node, std::size_t) { writeNode(json, node); });
    json.endArray();
}

void JsonListing::writeNode(JsonWriter& json, Node const& node) const
{
    json.beginObject().member("id", node.id).member("parent", node.parent);
    json.member("type", node.type).member("name", node.name);
    if (node.group() != nullptr)
        writeGroup(json, *node.group());
    if (node.shape() != nullptr)
        writeMaterial(json, node.shape()->material);
    if (node.geometry() != nullptr)
        writeDatasets(json, *node.geometry());
    json.endObject();
}

void JsonListing::writeDatasets(JsonWriter& json, MoxRead::Geometry const& geometry) const
{
    json.key("datasets").beginArray();
    for (Variable const& variable : geometry.variables)
        writeDataset(json, variable);
    json.endArray();
}

void JsonListing::writeDataset(JsonWriter& json, Variable const& variable) const
{
    Variable const& stored = model_.resolve(variable);
    bool const isFloat = stored.elementType() == MoxRead::ElementType::Float;
    json.beginObject();
    writeDatasetName(json, variable);
    json.member("type", variable.variableType());
    json.member("elementType", isFloat ? "float" : "uint32");
    json.member("rows", stored.rows()).member("width", unsigned{stored.width});
    if (contents_.hasValues())
        writeRange(json, contents_.rangeOf(stored));
    json.member("vibration", variable.vibration);
    writeLink(json, variable);
    writeAttributes(json, variable.attributes);
    json.endObject();
}

void JsonListing::writeLink(JsonWriter& json, Variable const& variable) const
{
    json.key("link");
    if (!variable.linked) {
        json.null();
        return;
    }
    json.beginObject(JsonWriter::OneLine).member("node", variable.link.nodeId);
    writeDatasetName(json, model_.variable(variable.link));
    json.endObject();
}

void JsonListing::writeSteps(JsonWriter& json) const
{
    json.key("steps").beginArray();
    for (StepUse const& step : contents_.steps()) {
        json.beginObject().member("name", step.name).member("datasetCount", step.datasets);
        writeAttributes(json, step.times);
        json.endObject();
    }
    json.endArray();
}

void JsonListing::writeHeavyData(JsonWriter& json) const
{
    json.key("heavyData").beginObject(JsonWriter::OneLine).member("bytes", model_.heavyLength());
    json.member("unused", model_.unusedHeavyLength()).endObject();
}

void writeWritings(JsonWriter& json, std::vector<WritingRecord> const& writings)
{
    json.key("writings").beginArray();
    for (WritingRecord const& writing : writings) {
        json.beginObject().member("time", writing.time).member("host", writing.host);
        json.member("user", writing.user).member("format", writing.formatVersion);
        json.key("texts").values(
            std::array<std::string, 3>{writing.text1, writing.text2, writing.text});
        json.endObject();
    }
    json.endArray();
}

void writeDatasetName(JsonWriter& json, Variable const& variable)
{
    json.member("dataset", variable.datasetName()).key("step");
    if (variable.hasStep())
        json.value(variable.stepName());
    else
        json.null();
}

} // namespace Mox
