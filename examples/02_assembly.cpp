// An assembly given as component paths, with transforms, materials and attributes.

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;

namespace {

void moveGroup(Model& model, std::string const& path, std::vector<float> const& translation)
{
    NodeProperties transform;
    transform.set(PropertyType::Translation, translation);
    Attributes attributes;
    attributes.set("Supplier", "internal");
    attributes.set("Revision", 3);
    model.setNodeData(model.getNodeId(path), transform, attributes);
}

void paint(Model& model, unsigned int shape, std::vector<float> const& color, float transparency)
{
    NodeProperties material;
    material.set(PropertyType::DiffuseColor, color);
    material.set(PropertyType::Transparency, transparency);
    model.setNodeData(shape, material);
}

} // namespace

int main(int argc, char** argv)
{
    try {
        SaverOptions options;
        options.overwrite = true;
        Model model;
        model.saveTo(argc > 1 ? argv[1] : "assembly.mox", options);
        // A path that ends with the separator names a group, any other a shape.
        Array1d<unsigned int> const ids =
            model.addAssemblyComponents({"/car/body/door", "/car/body/roof", "/car/wheels/"});
        moveGroup(model, "/car/wheels", {0.0F, 0.0F, -0.4F});
        paint(model, ids[0], {0.8F, 0.1F, 0.1F}, 0.0F);
        paint(model, ids[1], {0.6F, 0.8F, 0.9F}, 0.5F);
        // Both shapes share these coordinates: the values stand in the file once.
        model.addArrayProperty(DatasetType::Coordinates,
                               Array2d<float>(3, 3, {0, 0, 0, 1, 0, 0, 0, 1, 0}),
                               Array1d<unsigned int>{ids[0], ids[1]}, Step());
        model.close();
    } catch (Zyl2::Exception::Exception const& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
