// The smallest useful model: a group, one shape with a line element, and a displacement.

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include <cstdlib>
#include <iostream>

using namespace Zyl2::Mox2;

int main(int argc, char** argv)
{
    try {
        SaverOptions options;
        options.overwrite = true;
        options.text1 = "01_first_model";
        Model model;
        model.saveTo(argc > 1 ? argv[1] : "first.mox", options);
        model.addNode(NodeType::RootGroup, "Beam");
        unsigned int const beam = model.addNode(NodeType::Shape, "Steel");
        model.addArrayProperty(DatasetType::Coordinates, Array2d<float>(2, 3, {0, 0, 0, 1, 0, 0}),
                               beam, Step());
        model.addArrayProperty(DatasetType::Connectivity1, Array1d<unsigned int>{0, 1}, beam,
                               Step());
        model.addArrayProperty(DatasetType::Polylength1, Array1d<unsigned int>(1, 2U), beam,
                               Step());
        model.addArrayProperty(DatasetType::Displacement,
                               Array2d<float>(2, 3, {0, 0, 0, 0, 0, -0.1F}), beam, Step("Load 1"));
        model.close();
    } catch (Zyl2::Exception::Exception const& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
