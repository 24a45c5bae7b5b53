#include "mox/commands/CheckCommand.h"

#include "mox/check/Kinds.h"

#include "Command.h"
#include "ModelFile.h"
#include "support/Folder.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;
using MoxTest::ModelFile;

namespace {

using Floats = std::vector<float>;
using Uints = std::vector<unsigned int>;

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

/// A mesh as a host has it; what is empty is not given to the model.
struct Mesh
{
    int dimension = 3;
    Floats coordinates;
    Uints connectivity;
    Uints polylength;
    Uints nodeIds;
    Uints elementIds;
    Attributes attributes;
};

/// Two tetrahedra that share a face, with ids.
Mesh tetrahedra()
{
    return {3,
            {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 1, 1},
            {0, 1, 2, 3, 1, 2, 3, 4},
            {4, 4},
            {11, 12, 13, 14, 15},
            {101, 102},
            {}};
}

/// A mesh of one element.
Mesh element(int dimension, Floats const& coordinates)
{
    Mesh mesh;
    mesh.dimension = dimension;
    mesh.coordinates = coordinates;
    for (unsigned int node = 0; node < coordinates.size() / 3; ++node)
        mesh.connectivity.push_back(node);
    mesh.polylength = {static_cast<unsigned int>(mesh.connectivity.size())};
    return mesh;
}

Floats const cubeCorners = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1};

/// Turns an element over: what was its bottom becomes its top.
Floats mirrored(Floats coordinates)
{
    for (std::size_t i = 2; i < coordinates.size(); i += 3)
        coordinates[i] = -coordinates[i];
    return coordinates;
}

Floats withMidSideNodes(Floats coordinates, std::vector<std::pair<unsigned, unsigned>> const& edges)
{
    for (auto const& [from, to] : edges)
        for (unsigned int i = 0; i < 3; ++i)
            coordinates.push_back((coordinates[3 * from + i] + coordinates[3 * to + i]) / 2);
    return coordinates;
}

Step timeStep(std::string const& name, float time)
{
    Attributes attributes;
    attributes.set("Time", time);
    return Step(name, attributes);
}

/// Builds a model with the public API only, as any host does.
class Host
{
public:
    explicit Host(Model& model) : model_(model)
    {
        group_ = model.addNode(NodeType::RootGroup, "root");
    }

    Model& model() { return model_; }
    unsigned int group() const { return group_; }

    /// The id of a new shape below the root.
    unsigned int shape(std::string const& name = "part")
    {
        model_.setCurrentNodeId(group_);
        return model_.addNode(NodeType::Shape, name);
    }

    unsigned int shape(Mesh const& mesh, std::string const& name = "part")
    {
        unsigned int const id = shape(name);
        add(mesh, id);
        return id;
    }

    void add(Mesh const& mesh, unsigned int id)
    {
        auto const type = [&](DatasetType first) {
            return static_cast<DatasetType>(static_cast<int>(first) + mesh.dimension - 1);
        };
        if (!mesh.coordinates.empty())
            table(DatasetType::Coordinates, 3, mesh.coordinates, id);
        if (!mesh.connectivity.empty())
            model_.addArrayProperty(type(DatasetType::Connectivity1),
                                    Array1d<unsigned int>(mesh.connectivity), id, Step(),
                                    mesh.attributes);
        column(type(DatasetType::Polylength1), mesh.polylength, id);
        column(DatasetType::NodeIds, mesh.nodeIds, id);
        column(DatasetType::ElementIds, mesh.elementIds, id);
    }

    void column(DatasetType type, Uints const& values, unsigned int id, Step const& step = Step())
    {
        if (!values.empty())
            model_.addArrayProperty(type, Array1d<unsigned int>(values), id, step);
    }

    template <typename Ids>
    void table(DatasetType type, unsigned long width, Floats const& values, Ids const& ids,
               Step const& step = Step())
    {
        model_.addArrayProperty(type, Array2d<float>(values.size() / width, width, values), ids,
                                step);
    }

    template <typename Ids>
    void displacement(Floats const& values, Ids const& ids, Step const& step = Step("Load"))
    {
        table(DatasetType::Displacement, 3, values, ids, step);
    }

    void result(std::string const& name, DatasetType type, Floats const& values, unsigned int id,
                Step const& step = Step("Load"))
    {
        model_.addArrayProperty(name, type, Array1d<float>(values), id, step);
    }

private:
    Model& model_;
    unsigned int group_ = 0;
};

struct Verdict
{
    int status = 0;
    std::string findings;
    std::string lastLine;
    std::string err;
};

Verdict verdictOn(std::string const& path, bool json = false)
{
    std::ostringstream out;
    std::ostringstream err;
    Mox::CheckArguments options;
    options.file = path;
    options.json = json;
    int const status = Mox::checkFile(options, out, err);
    std::string text = out.str();
    std::size_t const last = json || text.empty() ? 0 : text.rfind('\n', text.size() - 2) + 1;
    return {status, text.substr(0, last), text.substr(last), err.str()};
}

using Build = std::function<void(Host&)>;

ModelFile fileOf(Build const& build)
{
    return ModelFile([&](Model& model) {
        Host host(model);
        build(host);
    });
}

struct WrongModel
{
    std::string name;
    Build build;
    /// What is printed, but for the last line.
    std::string findings;
};

WrongModel const wrongModels[] = {
    {"no coordinates",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.coordinates.clear();
         host.shape(mesh);
     },
     "error: \"root/part\": no coordinates: expected a dataset of coordinates, found none among 4 "
     "datasets\n"},
    {"coordinates that are unsigned integers",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.coordinates.clear();
         unsigned int const id = host.shape(mesh);
         host.model().addArrayProperty(DatasetType::Coordinates, Array2d<unsigned int>(5, 3, 1U),
                                       id, Step());
     },
     "error: \"root/part\" dataset \"Coordinates\": type of numbers: expected floats, found "
     "unsigned integers\n"},
    {"a node at NaN",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.coordinates[4] = notANumber;
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Coordinates\": position not finite: expected numbers, found "
     "NaN in 1 of 5 rows, the first of them row 1\n"},
    {"a node at infinity",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.coordinates[12] = -infinity;
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Coordinates\": position not finite: expected finite numbers, "
     "found infinite values in 1 of 5 rows, the first of them row 4\n"},
    {"connectivity of floats",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.connectivity.clear();
         unsigned int const id = host.shape(mesh);
         host.model().addArrayProperty(DatasetType::Connectivity3,
                                       Array1d<float>{0, 1, 2, 3, 3, 2, 1, 4}, id, Step());
     },
     "error: \"root/part\" dataset \"Connectivity\": type of numbers: expected unsigned integers, "
     "found floats\n"},
    {"no polylength",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.polylength.clear();
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": no polylength: expected a dataset Polylength, "
     "which says how many nodes each element has, found none\n"},
    {"no connectivity",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.connectivity.clear();
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Polylength\": no connectivity: expected a dataset "
     "Connectivity, which says what nodes the elements have, found none\n"},
    {"polylength with a sum that is too small",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.polylength = {4, 3};
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": polylength sum: expected 7 values, the sum of "
     "the nodes of 2 elements by Polylength, found 8 values\n"},
    {"polylength with a sum that is too large",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.polylength = {4294967295U, 4294967295U};
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": polylength sum: expected 8,589,934,590 "
     "values, the sum of the nodes of 2 elements by Polylength, found 8 values\n"},
    {"rows of nodes that are counted from 1",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         for (unsigned int& node : mesh.connectivity)
             ++node;
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": node out of range: expected nodes among the 5 "
     "rows of coordinates, counted from 0, found node 5 in element row 1 (id 102)\n"
     "warning: \"root/part\" dataset \"Coordinates\": unused nodes: expected elements at each of 5 "
     "nodes, found 1 node without; the first is in row 0\n"},
    {"a row of nodes that is -1",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.connectivity[0] = 4294967295U;
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": node out of range: expected nodes among the 5 "
     "rows of coordinates, counted from 0, found node 4,294,967,295 in element row 0 (id 101)\n"
     "warning: \"root/part\" dataset \"Coordinates\": unused nodes: expected elements at each of 5 "
     "nodes, found 1 node without; the first is in row 0\n"},
    {"an element without nodes",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.polylength = {4, 4, 0};
         mesh.elementIds = {1, 2, 3};
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": element type: expected as many nodes as an "
     "element of dimension 3 has, found 0 nodes in element row 2 (id 3)\n"},
    {"an element of seven nodes",
     [](Host& host) {
         host.shape(element(3, Floats(cubeCorners.begin(), cubeCorners.begin() + 21)));
     },
     "error: \"root/part\" dataset \"Connectivity\": element type: expected as many nodes as an "
     "element of dimension 3 has, found 7 nodes in element row 0\n"},
    {"a dimension that is not the elements'",
     [](Host& host) {
         Mesh mesh = element(2, cubeCorners);
         mesh.connectivity.resize(5);
         mesh.polylength = {5};
         mesh.coordinates.resize(15);
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": element type: expected as many nodes as an "
     "element of dimension 2 has, found 5 nodes in element row 0\n"},
    {"a type of elements that is unknown",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.attributes.set("ElementType", "C3D4");
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": element type: expected an attribute "
     "ElementType that names a type of elements of dimension 3, found \"C3D4\"\n"},
    {"a type of elements with another number of nodes",
     [](Host& host) {
         Mesh mesh = element(3, cubeCorners);
         mesh.attributes.set("ElementType", "Pentagonal prism");
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": element type: expected as many nodes as a "
     "Pentagonal prism has, found 8 nodes in element row 0\n"},
    {"a type of elements of another dimension",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.attributes.set("ElementType", "Polygon");
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": element type: expected an attribute "
     "ElementType that names a type of elements of dimension 3, found \"Polygon\"\n"},
    {"connectivity in a step",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         Uints const connectivity = mesh.connectivity;
         mesh.connectivity.clear();
         mesh.polylength.clear();
         mesh.elementIds.clear();
         unsigned int const id = host.shape(mesh);
         host.column(DatasetType::Connectivity3, connectivity, id, Step("Load"));
     },
     "error: \"root/part\" dataset \"Connectivity\" step \"Load\": mesh in a step: expected no "
     "step, as meshes do not change, found a step\n"},
    {"node ids in a step",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.nodeIds.clear();
         unsigned int const id = host.shape(mesh);
         host.column(DatasetType::NodeIds, {1, 2, 3, 4, 5}, id, Step("Load"));
     },
     "error: \"root/part\" dataset \"Node Ids\" step \"Load\": mesh in a step: expected no step, "
     "as meshes do not change, found a step\n"},
    {"a node id twice",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.nodeIds[3] = 12;
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Node Ids\": ids not unique: expected each id once, found id "
     "12 in the rows 1 and 3\n"},
    {"element ids that are all alike",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.elementIds = {7, 7};
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Element IDs\": ids not unique: expected each id once, found "
     "id 7 in the rows 0 and 1\n"},
    {"fewer node ids than nodes",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.nodeIds.pop_back();
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Node Ids\": row count: expected 5 rows, one for each node, "
     "found 4 rows\n"},
    {"more element ids than elements",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.elementIds.push_back(103);
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Element IDs\": row count: expected 2 rows, one for each "
     "element, found 3 rows\n"},
    {"node ids that are floats",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.nodeIds.clear();
         unsigned int const id = host.shape(mesh);
         host.model().addArrayProperty(DatasetType::NodeIds, Array1d<float>{1, 2, 3, 4, 5}, id,
                                       Step());
     },
     "error: \"root/part\" dataset \"Node Ids\": type of numbers: expected unsigned integers, "
     "found floats\n"},
    {"a displacement of another mesh",
     [](Host& host) { host.displacement(Floats(12), host.shape(tetrahedra())); },
     "error: \"root/part\" dataset \"Displacement\" step \"Load\": row count: expected 5 rows, one "
     "for each node, found 4 rows\n"},
    {"a result on nodes that is given as one on elements",
     [](Host& host) {
         host.result("Energy", DatasetType::Result14, Floats(5), host.shape(tetrahedra()));
     },
     "error: \"root/part\" dataset \"Energy\" step \"Load\": row count: expected 2 rows, one for "
     "each element, found 5 rows\n"},
    {"a result on elements where there are none",
     [](Host& host) {
         Mesh mesh;
         mesh.coordinates = {0, 0, 0};
         host.result("Energy", DatasetType::Result14, Floats(1), host.shape(mesh));
     },
     "error: \"root/part\" dataset \"Energy\" step \"Load\": row count: expected 0 rows, one for "
     "each element, found 1 row\n"},
    {"coordinates of a step with fewer rows",
     [](Host& host) {
         host.table(DatasetType::Coordinates, 3, Floats(12), host.shape(tetrahedra()),
                    Step("Load"));
     },
     "error: \"root/part\" dataset \"Coordinates\" step \"Load\": row count: expected 5 rows, one "
     "for each node, found 4 rows\n"},
    {"an inverted tetrahedron",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         std::swap(mesh.connectivity[0], mesh.connectivity[1]);
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": negative volume: expected elements of "
     "positive volume, found volume -0.1667 of the tetrahedron in element row 0 (id 101)\n"},
    {"an inverted pyramid",
     [](Host& host) {
         host.shape(element(3, mirrored({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1})));
     },
     "error: \"root/part\" dataset \"Connectivity\": negative volume: expected elements of "
     "positive volume, found volume -0.3333 of the pyramid in element row 0\n"},
    {"an inverted wedge",
     [](Host& host) {
         host.shape(element(3, mirrored({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 0, 1, 1})));
     },
     "error: \"root/part\" dataset \"Connectivity\": negative volume: expected elements of "
     "positive volume, found volume -0.5 of the wedge in element row 0\n"},
    {"an inverted hexahedron", [](Host& host) { host.shape(element(3, mirrored(cubeCorners))); },
     "error: \"root/part\" dataset \"Connectivity\": negative volume: expected elements of "
     "positive volume, found volume -1 of the hexahedron in element row 0\n"},
    {"an inverted tetrahedron of 10 nodes",
     [](Host& host) {
         host.shape(element(
             3, mirrored(withMidSideNodes({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1},
                                          {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}}))));
     },
     "error: \"root/part\" dataset \"Connectivity\": negative volume: expected elements of "
     "positive volume, found volume -0.1667 of the tetrahedron in element row 0\n"},
    {"a hexahedron whose nodes are numbered row by row",
     [](Host& host) {
         Mesh mesh = element(3, cubeCorners);
         mesh.connectivity = {0, 1, 3, 2, 4, 5, 7, 6};
         host.shape(mesh);
     },
     "error: \"root/part\" dataset \"Connectivity\": twisted element: expected elements whose "
     "sides and faces do not cross, found parts that cancel each other to volume 0 of the "
     "hexahedron in element row 0\n"},
    {"a quadrangle whose sides cross",
     [](Host& host) {
         host.shape(element(2, {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0}));
     },
     "error: \"root/part\" dataset \"Connectivity\": twisted element: expected elements whose "
     "sides and faces do not cross, found parts that cancel each other to area 0 of the quadrangle "
     "in element row 0\n"},
    {"a hexahedron without height",
     [](Host& host) {
         Floats flat = cubeCorners;
         for (std::size_t i = 2; i < flat.size(); i += 3)
             flat[i] = 0;
         host.shape(element(3, flat));
     },
     "warning: \"root/part\" dataset \"Connectivity\": size of zero: expected no volume of 0, "
     "found volume 0 of the hexahedron in element row 0\n"},
    {"a triangle with a node twice",
     [](Host& host) {
         Mesh mesh = element(2, {0, 0, 0, 1, 0, 0});
         mesh.connectivity = {0, 1, 1};
         mesh.polylength = {3};
         host.shape(mesh);
     },
     "warning: \"root/part\" dataset \"Connectivity\": size of zero: expected no area of 0, found "
     "area 0 of the triangle in element row 0\n"},
    {"a line without length",
     [](Host& host) {
         host.shape(element(1, {1, 2, 3, 1, 2, 3}));
     },
     "note: \"root/part\" dataset \"Connectivity\": length of zero: expected no length of 0, found "
     "length 0 of the line in element row 0\n"},
    {"nodes that no element uses",
     [](Host& host) {
         Mesh mesh = tetrahedra();
         mesh.connectivity.resize(4);
         mesh.polylength = {4};
         mesh.elementIds = {1};
         host.shape(mesh);
     },
     "warning: \"root/part\" dataset \"Coordinates\": unused nodes: expected elements at each of 5 "
     "nodes, found 1 node without; the first is in row 4\n"},
    {"two connectivities in a shape",
     [](Host& host) {
         unsigned int const id = host.shape(tetrahedra());
         host.model().addArrayProperty("Faces", DatasetType::Connectivity2,
                                       Array1d<unsigned int>{0, 1, 2}, id, Step());
     },
     "warning: \"root/part\" dataset \"Faces\": second mesh: expected one dataset of this kind in "
     "a shape, found another one, which viewers leave out\n"},
    {"triangles given over the tetrahedra",
     [](Host& host) {
         unsigned int const id = host.shape(tetrahedra());
         host.column(DatasetType::Connectivity2, {0, 1, 2}, id);
     },
     "error: \"root/part\" dataset \"Connectivity\": polylength sum: expected 8 values, the sum of "
     "the nodes of 2 elements by Polylength, found 3 values\n"
     "warning: \"root/part\" dataset \"Coordinates\": lost values: expected a shape that takes all "
     "values that are given, and keeps them, found 8 values that belong to no dataset, stored "
     "behind this one's\n"},
    {"a displacement that gets rotations in its second step",
     [](Host& host) {
         unsigned int const id = host.shape(tetrahedra());
         host.displacement(Floats(15), id, Step("1"));
         host.table(DatasetType::Displacement6, 6, Floats(30), id, Step("2"));
     },
     "warning: \"root/part\" dataset \"Displacement\" step \"2\": layout changes: expected "
     "variable type 13, as the dataset of this name has in step \"1\", found variable type 14\n"},
    {"a time that goes back",
     [](Host& host) {
         unsigned int const id = host.shape(tetrahedra());
         host.displacement(Floats(15), id, timeStep("1", 0.5F));
         host.displacement(Floats(15), id, timeStep("2", 0.25F));
     },
     "warning: \"root/part\" dataset \"Displacement\" step \"2\": time order: expected a time "
     "after 0.5 of the step \"1\" in front of it, found 0.25\n"},
    {"a time that stands still",
     [](Host& host) {
         unsigned int const id = host.shape(tetrahedra());
         host.displacement(Floats(15), id, timeStep("1", 0.5F));
         host.displacement(Floats(15), id, timeStep("2", 0.5F));
     },
     "warning: \"root/part\" dataset \"Displacement\" step \"2\": time order: expected a time "
     "after 0.5 of the step \"1\" in front of it, found 0.5\n"},
    {"a step that has no time",
     [](Host& host) {
         unsigned int const id = host.shape(tetrahedra());
         host.displacement(Floats(15), id, timeStep("1", 0.5F));
         host.displacement(Floats(15), id, Step("2"));
     },
     "warning: \"root/part\" dataset \"Displacement\" step \"2\": no time: expected an attribute "
     "Time, as other steps have, found none\n"},
    {"a step with two times",
     [](Host& host) {
         unsigned int const id = host.shape(tetrahedra());
         host.displacement(Floats(15), id, timeStep("1", 0.5F));
         host.result("Energy", DatasetType::Result14, Floats(2), id, timeStep("1", 0.75F));
     },
     "error: \"root/part\" dataset \"Energy\" step \"1\": times differ: expected 0.5, as "
     "\"root/part\" has for \"Displacement\", found 0.75\n"},
    {"a time that is NaN",
     [](Host& host) {
         host.displacement(Floats(15), host.shape(tetrahedra()), timeStep("1", notANumber));
     },
     "warning: \"root/part\" dataset \"Displacement\" step \"1\": time not finite: expected a "
     "finite time, found nan\n"},
    {"a displacement with NaN in one direction",
     [](Host& host) {
         Floats values(15);
         values[7] = notANumber;
         host.displacement(values, host.shape(tetrahedra()));
     },
     "warning: \"root/part\" dataset \"Displacement\" step \"Load\": not a number: expected "
     "numbers in all columns of a row, or in none, found NaN in some columns of 1 of 5 rows, the "
     "first of them row 2\n"},
    {"a displacement that is infinite",
     [](Host& host) {
         Floats values(15);
         values[9] = values[14] = infinity;
         host.displacement(values, host.shape(tetrahedra()));
     },
     "warning: \"root/part\" dataset \"Displacement\" step \"Load\": infinite values: expected "
     "finite numbers, found infinite values in 2 of 5 rows, the first of them row 3\n"},
    {"a displacement without a value at a node",
     [](Host& host) {
         Floats values(15);
         values[6] = values[7] = values[8] = notANumber;
         host.displacement(values, host.shape(tetrahedra()));
     },
     "note: \"root/part\" dataset \"Displacement\" step \"Load\": rows without value: expected a "
     "value in each row, found NaN in 1 of 5 rows, the first of them row 2\n"},
    {"a displacement given to a group",
     [](Host& host) {
         host.shape(tetrahedra());
         host.displacement(Floats(15), host.group());
     },
     "warning: \"root/part\" dataset \"Element IDs\": lost values: expected a shape that takes all "
     "values that are given, and keeps them, found 15 values that belong to no dataset, stored "
     "behind this one's\n"},
    {"a mesh given to the shape in place of its geometry",
     [](Host& host) {
         unsigned int const id = host.shape();
         host.add(tetrahedra(), id - 1);
     },
     "warning: lost values: expected a shape that takes all values that are given, and keeps them, "
     "found 32 values that belong to no dataset, stored before those of any dataset\n"
     "note: \"root/part\": no datasets: expected a mesh, found nothing\n"},
    {"a displacement given twice",
     [](Host& host) {
         unsigned int const id = host.shape(tetrahedra());
         host.displacement(Floats(15), id);
         host.displacement(Floats(15), id);
     },
     "warning: \"root/part\" dataset \"Element IDs\": lost values: expected a shape that takes all "
     "values that are given, and keeps them, found 15 values that belong to no dataset, stored "
     "behind this one's\n"},
    {"a shared result that one shape gets again as another",
     [](Host& host) {
         unsigned int const a = host.shape(tetrahedra(), "a");
         unsigned int const b = host.shape(tetrahedra(), "b");
         host.displacement(Floats(15), Array1d<unsigned int>{a, b});
         host.table(DatasetType::Displacement6, 6, Floats(30), a, Step("Load"));
     },
     "error: \"root/b\" dataset \"Displacement\" step \"Load\": link to another type: expected "
     "values of variable type 13, floats, found those of \"Displacement\" in step \"Load\", of "
     "type 14, floats\n"
     "warning: \"root/b\" dataset \"Element IDs\": lost values: expected a shape that takes all "
     "values that are given, and keeps them, found 15 values that belong to no dataset, stored "
     "behind this one's\n"},
    {"a shared result that another shape gives away",
     [](Host& host) {
         unsigned int const a = host.shape(tetrahedra(), "a");
         unsigned int const b = host.shape(tetrahedra(), "b");
         unsigned int const c = host.shape(tetrahedra(), "c");
         host.displacement(Floats(15), Array1d<unsigned int>{a, b});
         host.displacement(Floats(15), Array1d<unsigned int>{c, a});
     },
     "warning: \"root/c\" dataset \"Element IDs\": lost values: expected a shape that takes all "
     "values that are given, and keeps them, found 15 values that belong to no dataset, stored "
     "behind this one's\n"
     "warning: \"root/b\" dataset \"Displacement\" step \"Load\": link to a link: expected values "
     "as they were given for several shapes or steps, found those that \"root/a\" was given "
     "afterwards\n"},
    {"a group moved by NaN",
     [](Host& host) {
         host.shape(tetrahedra());
         NodeProperties p;
         p.set(PropertyType::Translation, Floats{0, notANumber, 0});
         host.model().setNodeData(host.group(), p);
     },
     "error: \"root\": transform not finite: expected finite numbers, found nan\n"},
    {"a group scaled to nothing",
     [](Host& host) {
         host.shape(tetrahedra());
         NodeProperties p;
         p.set(PropertyType::Scale, Floats{1, 1, 0});
         host.model().setNodeData(host.group(), p);
     },
     "warning: \"root\": scale of zero: expected factors other than 0 as scale, found 0, which "
     "makes all below the group flat\n"},
    {"a colour of 255",
     [](Host& host) {
         unsigned int const id = host.shape(tetrahedra());
         NodeProperties p;
         p.set(PropertyType::DiffuseColor, Floats{255, 128, 0});
         host.model().setNodeData(id, p);
     },
     "warning: \"root/part\": material: expected colours and transparency between 0 and 1, found "
     "255\n"},
    {"two shapes of one name",
     [](Host& host) {
         host.shape(tetrahedra());
         host.shape(tetrahedra());
     },
     "warning: \"root/part\": same name: expected a name of its own, found the name of a node "
     "before it\n"},
    {"a shape without datasets", [](Host& host) { host.shape(); },
     "note: \"root/part\": no datasets: expected a mesh, found nothing\n"},
    {"an inverted hexahedron of 20 nodes",
     [](Host& host) {
         host.shape(element(3, mirrored(withMidSideNodes(cubeCorners, {{0, 1},
                                                                       {1, 2},
                                                                       {2, 3},
                                                                       {3, 0},
                                                                       {4, 5},
                                                                       {5, 6},
                                                                       {6, 7},
                                                                       {7, 4},
                                                                       {0, 4},
                                                                       {1, 5},
                                                                       {2, 6},
                                                                       {3, 7}}))));
     },
     "error: \"root/part\" dataset \"Connectivity\": negative volume: expected elements of "
     "positive volume, found volume -1 of the hexahedron in element row 0\n"},
};

} // namespace

TEST(CheckCommand, EachWrongModelGetsItsFinding)
{
    for (WrongModel const& wrong : wrongModels) {
        SCOPED_TRACE(wrong.name);
        ModelFile const file = fileOf(wrong.build);
        Verdict const verdict = verdictOn(file.path());
        EXPECT_EQ(verdict.findings, wrong.findings);
        EXPECT_EQ(verdict.status, wrong.findings.find("error:") == std::string::npos ? 0 : 1);
        EXPECT_EQ(verdict.err, "");
    }
}

TEST(CheckCommand, AModelWithoutAnythingIsEmpty)
{
    ModelFile const file([](Model&) {});
    Verdict const verdict = verdictOn(file.path());
    EXPECT_EQ(verdict.findings, "warning: empty model: expected a root, found none\n");
    EXPECT_EQ(verdict.status, 0);
    EXPECT_EQ(verdict.lastLine,
              file.path() + ": 0 errors, 1 warning (0 shapes, 0 datasets, 0 steps)\n");
}

TEST(CheckCommand, ASoundModelIsOk)
{
    ModelFile const file = fileOf([](Host& host) {
        unsigned int const id = host.shape(tetrahedra());
        for (float const time : {0.0F, 0.5F, 1.0F}) {
            Step const step = timeStep("at " + std::to_string(time), time);
            host.displacement(Floats(15), id, step);
            host.table(DatasetType::Coordinates, 3, Floats(15), id, step);
            host.result("Energy", DatasetType::Result14, Floats(2), id, step);
        }
        host.column(DatasetType::PartElements3, {7}, id);
        host.shape(element(3, cubeCorners), "hexahedron");
        host.shape(element(2, Floats(cubeCorners.begin(), cubeCorners.begin() + 12)), "quadrangle");
        Mesh points;
        points.coordinates = {0, 0, 0};
        host.shape(points, "nodes without elements");
    });
    Verdict const verdict = verdictOn(file.path());
    EXPECT_EQ(verdict.findings, "");
    EXPECT_EQ(verdict.status, 0);
    EXPECT_EQ(verdict.lastLine, file.path() + ": ok (4 shapes, 22 datasets, 3 steps)\n");
}

TEST(CheckCommand, ManyFindingsOfOneKindAreSummedUp)
{
    ModelFile const file = fileOf([](Host& host) {
        for (int i = 0; i < 1244; ++i)
            host.displacement(Floats(3), host.shape("part " + std::to_string(i)));
    });
    Verdict const verdict = verdictOn(file.path());
    EXPECT_EQ(std::count(verdict.findings.begin(), verdict.findings.end(), '\n'), 11);
    EXPECT_NE(verdict.findings.find("\nerror: no coordinates: and 1,234 more\n"),
              std::string::npos);
    EXPECT_NE(verdict.lastLine.find(": 1,244 errors, 0 warnings ("), std::string::npos);
}

TEST(CheckCommand, WhatShapesShareIsToldOnce)
{
    Floats coordinates = tetrahedra().coordinates;
    coordinates[0] = notANumber;
    ModelFile const file = fileOf([&](Host& host) {
        Mesh mesh = tetrahedra();
        mesh.coordinates.clear();
        mesh.connectivity[0] = 9;
        unsigned int const a = host.shape("a");
        unsigned int const b = host.shape("b");
        Array1d<unsigned int> const both{a, b};
        host.table(DatasetType::Coordinates, 3, coordinates, both);
        host.model().addArrayProperty(DatasetType::Connectivity3,
                                      Array1d<unsigned int>(mesh.connectivity), both, Step());
        host.model().addArrayProperty(DatasetType::Polylength3,
                                      Array1d<unsigned int>(mesh.polylength), both, Step());
    });
    Verdict const verdict = verdictOn(file.path());
    EXPECT_NE(verdict.lastLine.find(": 2 errors, 1 warning ("), std::string::npos)
        << verdict.findings;
    EXPECT_EQ(verdict.findings.find("root/b"), std::string::npos) << verdict.findings;
}

TEST(CheckCommand, ElementsOfOneKindOfMistakeAreOneFinding)
{
    Mesh mesh = tetrahedra();
    std::swap(mesh.connectivity[0], mesh.connectivity[1]);
    std::swap(mesh.connectivity[4], mesh.connectivity[5]);
    ModelFile const file = fileOf([&](Host& host) { host.shape(mesh); });
    EXPECT_EQ(
        verdictOn(file.path()).findings,
        "error: \"root/part\" dataset \"Connectivity\": negative volume: expected elements of "
        "positive volume, found volume -0.1667 of the tetrahedron in element row 0 (id 101), "
        "the first of 2 such among 2 elements\n");
}

TEST(CheckCommand, JsonHasTheSameFindings)
{
    ModelFile const file = fileOf([](Host& host) {
        unsigned int const id = host.shape(tetrahedra());
        host.displacement(Floats(12), id);
        host.displacement(Floats(15), host.group());
    });
    Verdict const verdict = verdictOn(file.path(), true);
    EXPECT_EQ(verdict.status, 1);
    nlohmann::json const json = nlohmann::json::parse(verdict.lastLine);
    EXPECT_EQ(json.at("file"), file.path());
    EXPECT_EQ(json.at("ok"), false);
    EXPECT_EQ(json.at("shapeCount"), 1);
    EXPECT_EQ(json.at("datasetCount"), 6);
    EXPECT_EQ(json.at("stepCount"), 1);
    EXPECT_EQ(json.at("errorCount"), 1);
    EXPECT_EQ(json.at("warningCount"), 1);
    EXPECT_EQ(json.at("noteCount"), 0);
    EXPECT_EQ(json.at("findings").at(0), nlohmann::json({{"severity", "error"},
                                                         {"kind", "row count"},
                                                         {"path", "root/part"},
                                                         {"dataset", "Displacement"},
                                                         {"step", "Load"},
                                                         {"expected", "5 rows, one for each node"},
                                                         {"found", "4 rows"}}));
    EXPECT_EQ(json.at("findings").size(), 2U);
    EXPECT_EQ(json.at("kinds").at(1),
              nlohmann::json({{"kind", "lost values"}, {"severity", "warning"}, {"count", 1}}));
}

TEST(CheckCommand, AFileThatIsNoModelGetsOneLineOnTheErrorStream)
{
    Support::Folder const folder;
    std::string const path = folder.path("absent.mox").string();
    Verdict const verdict = verdictOn(path);
    EXPECT_EQ(verdict.status, 1);
    EXPECT_EQ(verdict.findings + verdict.lastLine, "");
    EXPECT_EQ(verdict.err.find(path + ": "), 0U);
}

TEST(CheckCommand, TheManualHasEachKindAndHowSevereItIs)
{
    std::string const manual = Support::contentOf(MANUAL);
    for (Mox::Check::Kind const* kind : Mox::Check::Kinds::all) {
        std::string const severity = kind->severity == Mox::Check::Severity::Error     ? "error"
                                     : kind->severity == Mox::Check::Severity::Warning ? "warning"
                                                                                       : "note";
        std::string const row = "| `" + std::string(kind->name) + "` | " + severity + " |";
        EXPECT_NE(manual.find(row), std::string::npos) << row;
    }
}

TEST(CheckCommand, NothingIsWrongWithResultsOfASolver)
{
    Support::Folder const folder;
    std::string const model = folder.path("model.mox").string();
    std::size_t count = 0;
    for (std::string const results : {RESULTS, EXAMPLE_RESULTS}) {
        for (auto const& entry : std::filesystem::directory_iterator(results)) {
            if (entry.path().extension() != ".frd")
                continue;
            std::string const call = "translate --overwrite '" + entry.path().string() + "' ";
            ASSERT_EQ(MoxTest::run(call + model).status, 0) << call;
            Verdict const verdict = verdictOn(model);
            EXPECT_NE(verdict.lastLine.find(": ok ("), std::string::npos) << entry.path() << '\n'
                                                                          << verdict.findings;
            ++count;
        }
    }
    EXPECT_GT(count, 20U);
}
