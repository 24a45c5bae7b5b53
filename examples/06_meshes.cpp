// Two parts side by side, each in a group that can be moved: a block of hexahedra, as a solver with
// ids of its own has it, and a plate of triangles, as a mesher that counts from 1 has it; with
// results on nodes and on elements, and a set of nodes. What the library does not take as it was
// given is printed.

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Log/StandardErrorLog.h>
#include <Zyl2/Mox2/Mesh.h>

#include <array>
#include <cstdlib>
#include <iostream>
#include <vector>

using namespace Zyl2::Mox2;

namespace {

using Point = std::array<double, 3>;

/// A group that stands where the model is to have the part.
unsigned int addPlace(Model& model, unsigned int root, char const* name, float x)
{
    unsigned int const group = addGroup(model, root, name);
    NodeProperties transform;
    transform.set(PropertyType::Translation, std::vector<float>{x, 0, 0});
    model.setNodeData(group, transform);
    return group;
}

/// Two hexahedra, one above the other.
void addBlock(Model& model, unsigned int group)
{
    std::vector<Point> coordinates;
    std::vector<int> ids;
    for (int layer = 0; layer < 3; ++layer) {
        for (Point const& corner :
             std::vector<Point>{{{0, 0, 0}}, {{1, 0, 0}}, {{1, 1, 0}}, {{0, 1, 0}}}) {
            coordinates.push_back({{corner[0], corner[1], 1.0 * layer}});
            ids.push_back(100 * (layer + 1) + static_cast<int>(ids.size()) % 4);
        }
    }
    std::vector<std::array<int, 8>> const elements = {{{100, 101, 102, 103, 200, 201, 202, 203}},
                                                      {{200, 201, 202, 203, 300, 301, 302, 303}}};
    std::vector<int> const elementIds = {10, 20};
    Mesh block(model, group, "Block", NodeOrder::Abaqus, NodeNumbering::Ids);
    block.setNodes(coordinates, ids);
    block.setElements({Elements(ElementType::Hexahedron8, elements, elementIds)});

    // The nodes that are clamped: 1 for each node in the set.
    Attributes isSet;
    isSet.set("Category", "NodeSet");
    std::vector<unsigned int> const clamped = {1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0};
    block.addNodeResult("Node Set Clamped", clamped, Step(), isSet);

    for (int increment = 1; increment <= 2; ++increment) {
        Attributes when;
        when.set("Time", 0.5F * static_cast<float>(increment));
        Step const step("Increment " + std::to_string(increment), when);
        std::vector<Point> displacement;
        displacement.reserve(coordinates.size());
        for (Point const& point : coordinates)
            displacement.push_back({{0, 0, -0.01 * increment * point[2]}});
        // xx, yy, zz, xy, yz, zx
        std::vector<std::array<double, 6>> const stress(elements.size(),
                                                        {{0, 0, -2.1 * increment, 0, 0, 0}});
        block.addNodeResult("Displacement", displacement, step);
        block.addElementResult("Stress", stress, step);
    }
}

/// Two triangles, whose nodes are counted from 1.
void addPlate(Model& model, unsigned int group)
{
    std::vector<Point> const coordinates = {{{0, 0, 0}}, {{1, 0, 0}}, {{1, 1, 0}}, {{0, 1, 0}}};
    std::vector<std::array<long, 3>> const elements = {{{1, 2, 3}}, {{1, 3, 4}}};
    std::vector<float> const temperature = {20, 25, 30, 25};
    std::vector<float> const thickness = {2, 2.5F};
    Mesh plate(model, group, "Plate", NodeOrder::Gmsh, NodeNumbering::FromOne);
    plate.setNodes(coordinates);
    plate.setElements({Elements(ElementType::Triangle3, elements)});
    plate.addNodeResult("Temperature", temperature, Step("Increment 2"));
    plate.addElementResult("Thickness", thickness);
}

} // namespace

int main(int argc, char** argv)
{
    Zyl2::Log::StandardErrorLog warnings;
    Zyl2::Log::setActiveLogSystem(&warnings);
    try {
        SaverOptions options;
        options.overwrite = true;
        Model model;
        model.saveTo(argc > 1 ? argv[1] : "meshes.mox", options);
        unsigned int const root = model.addNode(NodeType::RootGroup, "Assembly");
        unsigned int const left = addPlace(model, root, "Left", -2);
        unsigned int const right = addPlace(model, root, "Right", 2);
        addBlock(model, left);
        addPlate(model, right);
        model.close();
    } catch (Zyl2::Exception::Exception const& failure) {
        // The detail says which mesh, and what is wrong with it.
        std::cerr << failure.what() << ": " << Zyl2::Exception::detail(failure) << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
