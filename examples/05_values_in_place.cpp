// Values in place: a solver's own arrays of doubles, one field after the other and interleaved, are
// written from where they are. Nothing is copied into arrays of the library first, and a value that
// the file has no place for is named.

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;

namespace {

std::size_t const nodes = 5;

/// What the solver knows of a node; it has more than the model wants.
struct Node
{
    double mass;
    double position[3];
    double displacement[3];
};

std::vector<Node> solution()
{
    std::vector<Node> result(nodes);
    for (std::size_t at = 0; at < nodes; ++at) {
        double const x = 0.25 * static_cast<double>(at);
        result[at] = {1.5, {x, 0, 0}, {0, 0, -0.1 * x * (1 - x)}};
    }
    return result;
}

/// A member of all nodes, which lie a whole node apart.
ArrayView ofAll(std::vector<Node> const& solved, double (Node::*member)[3])
{
    return ArrayView(solved.front().*member, solved.size(), 3, sizeof(Node), sizeof(double));
}

void write(std::string const& path)
{
    std::vector<Node> const solved = solution();
    std::vector<int> const connectivity{0, 1, 1, 2, 2, 3, 3, 4};
    std::vector<int> const polylengths(nodes - 1, 2);
    // All normal stresses, then all shear stresses of each kind: columns first.
    std::vector<double> const stress(nodes * 6, 2.5e6);
    auto const value = static_cast<std::ptrdiff_t>(sizeof(double));
    ArrayView const stresses(stress.data(), nodes, 6, value,
                             value * static_cast<std::ptrdiff_t>(nodes));

    Model model;
    SaverOptions options;
    options.overwrite = true;
    model.saveTo(path, options);
    model.addNode(NodeType::RootGroup, "Beam");
    unsigned int const beam = model.addNode(NodeType::Shape, "Steel");
    model.addArrayProperty(DatasetType::Coordinates, ofAll(solved, &Node::position), beam, Step());
    model.addArrayProperty(DatasetType::Connectivity1, connectivity, beam, Step());
    model.addArrayProperty(DatasetType::Polylength1, polylengths, beam, Step());
    model.addArrayProperty(DatasetType::Displacement, ofAll(solved, &Node::displacement), beam,
                           Step("Load 1"));
    model.addArrayProperty("Stress", DatasetType::Result13, stresses, beam, Step("Load 1"));
    try {
        std::vector<double> const diverged{1, 2, 3, 4, 1e99};
        model.addArrayProperty("Energy", DatasetType::Result10, diverged, beam, Step("Load 1"));
    } catch (Zyl2::Exception::OverflowError const& failure) {
        // Result10 "Energy": row 4, column 0 holds 1e+99, which is beyond the range of a float
        std::cout << failure.what() << ": " << Zyl2::Exception::detail(failure) << '\n';
    }
    model.close();
}

} // namespace

int main(int argc, char** argv)
{
    std::string const path = argc > 1 ? argv[1] : "values_in_place.mox";
    try {
        write(path);
    } catch (std::exception const& failure) {
        std::cerr << path << ": " << failure.what() << ". " << Zyl2::Exception::detail(failure)
                  << '\n';
        return EXIT_FAILURE;
    }
    std::cout << "wrote " << path << '\n';
    return EXIT_SUCCESS;
}
