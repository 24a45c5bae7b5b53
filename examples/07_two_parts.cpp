// The host that the start page shows: two parts side by side in a group that is moved, a block of
// hexahedra and a cap of tetrahedra, with displacements of nodes and stresses of elements in three
// steps, a material and a set of nodes. 02_two_parts.c, .f90 and 03_two_parts.py write the same.

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Log/StandardErrorLog.h>
#include <Zyl2/Mox2/Mesh.h>

#include <array>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;

namespace {

using Point = std::array<double, 3>;
using Tensor = std::array<double, 6>;

std::vector<Point> const blockNodes = {{{0, 0, 0}}, {{1, 0, 0}}, {{1, 1, 0}}, {{0, 1, 0}},
                                       {{0, 0, 1}}, {{1, 0, 1}}, {{1, 1, 1}}, {{0, 1, 1}},
                                       {{0, 0, 2}}, {{1, 0, 2}}, {{1, 1, 2}}, {{0, 1, 2}}};
std::vector<std::array<int, 8>> const hexahedra = {{{0, 1, 2, 3, 4, 5, 6, 7}},
                                                   {{4, 5, 6, 7, 8, 9, 10, 11}}};

std::vector<Point> const capNodes = {
    {{0, 0, 2}}, {{1, 0, 2}}, {{1, 1, 2}}, {{0, 1, 2}}, {{0.5, 0.5, 3}}};
std::vector<std::array<int, 4>> const tetrahedra = {{{0, 1, 2, 4}}, {{0, 2, 3, 4}}};

// What a solver would compute: the parts sink, and are pressed together.
void addResults(Mesh& mesh, std::vector<Point> const& nodes)
{
    for (int number = 1; number <= 3; ++number) {
        Attributes attributes;
        attributes.set("StepNumber", number);
        attributes.set("Time", 0.5 * number);
        Step const step("Step " + std::to_string(number), attributes);

        std::vector<Point> displacement;
        displacement.reserve(nodes.size());
        for (Point const& node : nodes)
            displacement.push_back({{0, 0, -0.01 * number * node[2]}});
        mesh.addNodeResult("Displacement", displacement, step);

        // xx, yy, zz, xy, yz, zx of each element.
        std::vector<Tensor> const stress(mesh.elements(), {{0, 0, -2.5 * number, 0, 0, 0}});
        mesh.addElementResult("Stress", stress, step);
    }
}

void addBlock(Model& model, unsigned int group)
{
    Mesh block(model, group, "Block");
    block.setNodes(blockNodes);
    block.setElements({Elements(ElementType::Hexahedron8, hexahedra)});
    addResults(block, blockNodes);

    // A set is 1 for the nodes that are in it, and 0 for the others.
    std::vector<int> const clamped = {1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0};
    Attributes isSet;
    isSet.set("Category", "NodeSet");
    block.addNodeResult("Node Set Clamped", clamped, Step(), isSet);
}

void addCap(Model& model, unsigned int group)
{
    Mesh cap(model, group, "Cap");
    cap.setNodes(capNodes);
    cap.setElements({Elements(ElementType::Tetrahedron4, tetrahedra)});
    addResults(cap, capNodes);

    NodeProperties material;
    material.set(PropertyType::DiffuseColor, std::vector<float>{0.8F, 0.1F, 0.1F});
    material.set(PropertyType::Transparency, 0.25F);
    model.setNodeData(cap.id(), material);
}

void write(std::string const& path)
{
    SaverOptions options;
    options.overwrite = true;
    Model model;
    model.saveTo(path, options);
    unsigned int const root = model.addNode(NodeType::RootGroup, "Two parts");
    unsigned int const group = addGroup(model, root, "Moved");
    NodeProperties transform;
    transform.set(PropertyType::Translation, std::vector<float>{2, 0, 0});
    transform.set(PropertyType::Rotation, std::vector<float>{0, 0, 1, 0.5F}); // axis, radians
    model.setNodeData(group, transform);
    addBlock(model, group);
    addCap(model, group);
    model.close();
}

} // namespace

int main(int argc, char** argv)
{
    // Tells of what the library does not take as it is given.
    Zyl2::Log::StandardErrorLog warnings;
    Zyl2::Log::setActiveLogSystem(&warnings);
    try {
        write(argc > 1 ? argv[1] : "two_parts.mox");
    } catch (std::exception const& failure) {
        std::cerr << failure.what() << ". " << Zyl2::Exception::detail(failure) << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
