// A transient result: one mesh, one displacement field for each time step, and modes. Full blocks
// of values go to the file while the model is written, so that memory stays bounded.

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;

namespace {

unsigned long const nodes = 1001;
double const pi = 3.14159265358979;

Array2d<float> coordinates()
{
    Array2d<float> result(nodes, 3, 0.0F);
    for (unsigned long node = 0; node < nodes; ++node)
        result(node, 0) = static_cast<float>(node) * 0.001F;
    return result;
}

Array2d<float> displacement(double time)
{
    Array2d<float> result(nodes, 3, 0.0F);
    for (unsigned long node = 0; node < nodes; ++node) {
        double const x = static_cast<double>(node) * 0.001;
        result(node, 2) = static_cast<float>(0.01 * std::sin(pi * x) * std::cos(2 * pi * time));
    }
    return result;
}

void addMesh(Model& model, unsigned int shape)
{
    Array1d<unsigned int> connectivity(2 * (nodes - 1));
    Array1d<unsigned int> nodeIds(nodes);
    for (unsigned int node = 0; node < nodes; ++node)
        nodeIds[node] = node + 1;
    for (unsigned long element = 0; element + 1 < nodes; ++element) {
        connectivity[2 * element] = static_cast<unsigned int>(element);
        connectivity[2 * element + 1] = static_cast<unsigned int>(element + 1);
    }
    model.addArrayProperty(DatasetType::Coordinates, coordinates(), shape, Step());
    model.addArrayProperty(DatasetType::Connectivity1, connectivity, shape, Step());
    model.addArrayProperty(DatasetType::Polylength1, Array1d<unsigned int>(nodes - 1, 2U), shape,
                           Step());
    model.addArrayProperty(DatasetType::NodeIds, nodeIds, shape, Step());
}

Step timeStep(int number, double time)
{
    Attributes attributes;
    attributes.set("StepNumber", number);
    attributes.set("Time", time);
    return Step("Step " + std::to_string(number), attributes);
}

Step mode(int number, double frequency)
{
    Attributes attributes;
    attributes.set("Mode", number);
    attributes.set("Frequency", frequency);
    // Marks the variable as a mode shape for readers that animate it.
    attributes.set("Category", "Vibration");
    return Step("Mode " + std::to_string(number), attributes);
}

} // namespace

int main(int argc, char** argv)
{
    try {
        SaverOptions options;
        options.overwrite = true;
        Model model;
        model.saveTo(argc > 1 ? argv[1] : "transient.mox", options);
        model.addNode(NodeType::RootGroup, "String");
        unsigned int const shape = model.addNode(NodeType::Shape, "Wire");
        addMesh(model, shape);
        for (int number = 1; number <= 10; ++number) {
            double const time = 0.05 * number;
            model.addArrayProperty(DatasetType::Displacement, displacement(time), shape,
                                   timeStep(number, time));
        }
        model.addArrayProperty(DatasetType::Displacement, displacement(0.0), shape, mode(1, 1.0));
        model.close();
    } catch (Zyl2::Exception::Exception const& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
