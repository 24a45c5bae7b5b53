#include "fault/Scenarios.h"

namespace Fault {

namespace {

using namespace Zyl2::Mox2;

Attributes someAttributes()
{
    Attributes attributes;
    attributes.set("Text", "a text that is too long for the buffer of a short string");
    attributes.set("Number", 1.5F);
    attributes.set("Count", 7U);
    attributes.set("Category", "Vibration");
    return attributes;
}

SaverOptions someOptions()
{
    SaverOptions options;
    options.text1 = "a host whose name is longer than short strings are";
    options.text2 = "its source, whose name is longer than short strings are";
    return options;
}

void addRoot(Host& host)
{
    host.call([](Model& model) { model.addNode(NodeType::RootGroup, "root", someAttributes()); });
}

unsigned int addShape(Host& host, char const* name)
{
    unsigned int id = 1;
    host.call([&](Model& model) { id = model.addNode(NodeType::Shape, name); });
    return id;
}

void describeGroup(Host& host, unsigned int id)
{
    host.call([id](Model& model) {
        NodeProperties properties;
        properties.set(PropertyType::Translation, std::vector<float>{1, 2, 3});
        properties.set(PropertyType::Rotation, std::vector<float>{0, 1, 0, 2});
        properties.set(PropertyType::Scale, std::vector<float>{2, 2, 2});
        model.setNodeData(id, properties, someAttributes());
    });
}

void describeShape(Host& host, unsigned int id)
{
    host.call([id](Model& model) {
        NodeProperties properties;
        properties.set(PropertyType::DiffuseColor, std::vector<float>{0, 1, 0});
        properties.set(PropertyType::Transparency, 0.5);
        model.setNodeData(id, properties);
    });
}

void buildTree(Host& host)
{
    host.open(0, [](Model& model, std::string const& path) { model.saveTo(path, someOptions()); });
    addRoot(host);
    unsigned int group = 1;
    host.call([&](Model& model) {
        group = model.addNode(NodeType::Group, "a group with a long name", someAttributes());
    });
    describeGroup(host, group);
    unsigned int const shape = addShape(host, "a shape with a long name");
    describeShape(host, shape);
    host.call([](Model& model) { model.moveToParentNode(); });
    host.call([](Model& model) { model.getNodeId("/root/a group with a long name"); });
    host.call([](Model& model) { model.getNodeId({"root", "a group with a long name"}); });
    host.call([group](Model& model) { model.setCurrentNodeId(group); });
    addShape(host, "another shape");
    host.close();
}

void addComponents(Host& host)
{
    host.open(0, [](Model& model, std::string const& path) {
        model.saveTo(std::wstring(path.begin(), path.end()));
    });
    host.call([](Model& model) {
        model.addAssemblyComponents(std::vector<std::string>{"/car/body/door with a long name",
                                                             "/car/body/", "/car/wheel"});
    });
    host.call([](Model& model) {
        std::map<std::string, Attributes> components;
        components["|car|body|"] = someAttributes();
        components["|car|axle|wheel"] = Attributes();
        model.addAssemblyComponents(components, "|");
    });
    host.call([](Model& model) { model.addAssemblyComponents({"/car/wheel", "/car/roof"}); });
    host.close();
}

void addFloatArrays(Host& host, unsigned int shape, Array1d<unsigned int> const& shapes)
{
    host.call([&](Model& model) {
        model.addArrayProperty(DatasetType::Coordinates, Array2d<float>(4, 3, 1.5F), shape, Step());
    });
    host.call([&](Model& model) {
        StepList steps(2);
        steps.set(0, Step("the first step of them all", someAttributes()));
        steps.set(1, Step("the second step of them all"));
        model.addArrayProperty(DatasetType::Displacement, Array2d<float>(4, 3, 2.5F), shapes, steps,
                               someAttributes());
    });
    host.call([&](Model& model) {
        model.addArrayProperty("a temperature with a long name", DatasetType::Result10,
                               Array1d<float>(4, 3.5F), shapes, Step("the first step of them all"),
                               someAttributes());
    });
}

void addIntegerArrays(Host& host, unsigned int shape, Array1d<unsigned int> const& shapes)
{
    host.call([&](Model& model) {
        model.addArrayProperty(DatasetType::NodeIds, Array1d<unsigned int>{1, 2, 3, 4},
                               static_cast<int>(shape), Step());
    });
    host.call([&](Model& model) {
        StepList steps(1);
        steps.set(0, Step("the first step of them all"));
        model.addArrayProperty("a count", DatasetType::Result10, Array2d<unsigned int>(4, 1, 7U),
                               static_cast<int>(shape), steps);
    });
    // This one replaces an array of the same name, shapes and step that was added before.
    host.call([&](Model& model) {
        model.addArrayProperty("a temperature with a long name", DatasetType::Result10,
                               Array1d<unsigned int>(2, 9U), shapes,
                               Step("the first step of them all"), someAttributes());
    });
}

void addArrays(Host& host)
{
    host.open(0, [](Model& model, std::string const& path) { model.saveTo(path.c_str()); });
    addRoot(host);
    unsigned int const first = addShape(host, "first shape");
    host.call([](Model& model) { model.setCurrentNodeId(1); });
    unsigned int const second = addShape(host, "second shape");
    Array1d<unsigned int> const shapes{first, second};
    addFloatArrays(host, first, shapes);
    addIntegerArrays(host, first, shapes);
    host.close();
}

void addDatasets(Host& host, unsigned int count)
{
    unsigned int const shape = addShape(host, "shape");
    for (unsigned int number = 0; number < count; ++number)
        host.call([&](Model& model) {
            model.addArrayProperty("dataset " + std::to_string(number), DatasetType::Result10,
                                   Array1d<unsigned int>(20, number), shape, Step());
        });
}

void writeBlocks(Host& host, unsigned int count)
{
    host.open(0, [](Model& model, std::string const& path) { model.saveTo(path); });
    addRoot(host);
    addDatasets(host, count);
    host.close();
}

void writeTwice(Host& host)
{
    for (std::size_t file = 0; file < Outcome::MaximumFiles; ++file) {
        host.open(file, [](Model& model, std::string const& path) {
            std::wstring const wide(path.begin(), path.end());
            model.saveTo(wide.c_str(), someOptions());
        });
        addRoot(host);
        addDatasets(host, 2);
        host.close();
    }
}

} // namespace

std::vector<Scenario> const& smallScenarios()
{
    static std::vector<Scenario> const scenarios{
        {"Tree", "1000", buildTree},
        {"Components", "200", addComponents},
        {"Arrays", "100", addArrays},
        {"Blocks", "70", [](Host& host) { writeBlocks(host, 9); }},
        {"SecondPath", "160", writeTwice}};
    return scenarios;
}

Scenario manyBlocks()
{
    return {"ManyBlocks", "80", [](Host& host) { writeBlocks(host, 205); }};
}

} // namespace Fault
