#include <Zyl2/Mox2/Model.h>

using namespace Zyl2::Mox2;

int main()
{
    SaverOptions options;
    options.overwrite = true;
    Model model;
    model.saveTo("ten_lines.mox", options);
    model.addNode(NodeType::RootGroup, "Beam");
    unsigned int const beam = model.addNode(NodeType::Shape, "Steel");
    model.addArrayProperty(DatasetType::Coordinates, Array2d<float>(2, 3, {0, 0, 0, 1, 0, 0}), beam,
                           Step());
    model.addArrayProperty(DatasetType::Displacement, Array2d<float>(2, 3, {0, 0, 0, 0, 0, -0.1F}),
                           beam, Step("Load 1"));
    model.close();
}
