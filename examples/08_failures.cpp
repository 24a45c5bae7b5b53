// What goes wrong is said: a mistake of the host is told in one sentence, and the model goes on; a
// full disk is survived. With MOXWRITER_WARNINGS=1 in the environment, what is not taken as it is
// given is said, too.

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Mesh.h>

#include <array>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;

namespace {

/// Two columns where there have to be three: nothing is added, and the model is as it was.
void addWrongDisplacement(Model& model, unsigned int shape)
{
    std::vector<double> const flat = {0, 0, 0, 0.1, 0, 0.2};
    try {
        model.addArrayProperty(DatasetType::Displacement, ArrayView::table(flat, 2), shape,
                               Step("Load 1"));
    } catch (Zyl2::Exception::InvalidArguments const& failure) {
        std::cout << failure.what() << ": " << Zyl2::Exception::detail(failure) << '\n';
    }
}

void fill(Model& model)
{
    std::vector<std::array<double, 3>> const nodes = {{{0, 0, 0}}, {{1, 0, 0}}, {{0, 1, 0}}};
    std::vector<std::array<int, 3>> const triangles = {{{0, 1, 2}}};
    unsigned int const root = model.addNode(NodeType::RootGroup, "Plate");
    Mesh plate(model, root, "Steel");
    plate.setNodes(nodes);
    plate.setElements({Elements(ElementType::Triangle3, triangles)});
    addWrongDisplacement(model, plate.id());
}

/// Whether the file is whole. What went wrong is said, and nothing ends the process.
bool write(std::string const& path)
{
    SaverOptions options;
    options.overwrite = true;
    Model model;
    try {
        model.saveTo(path, options);
        fill(model);
        model.close();
        return true;
    } catch (std::exception const& failure) {
        std::cerr << path << ": " << failure.what() << ". " << Zyl2::Exception::detail(failure)
                  << '\n';
    }
    try {
        model.close(); // does nothing if it was close that failed
    } catch (std::exception const&) {
        // Said once is enough.
    }
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    // A disk that is always full.
    if (write("/dev/full"))
        return EXIT_FAILURE;
    return write(argc > 1 ? argv[1] : "failures.mox") ? EXIT_SUCCESS : EXIT_FAILURE;
}
