#include <moxread/FormatError.h>
#include <moxread/Model.h>
#include <moxread/NodePath.h>
#include <moxread/NodeVisit.h>

#include <cstddef>
#include <iostream>

namespace {

void listDatasets(MoxRead::Model& model)
{
    MoxRead::visitNodes(model, model.node(1), [&](MoxRead::Node const& node, std::size_t) {
        if (node.geometry() == nullptr)
            return;
        for (MoxRead::Variable const& variable : node.geometry()->variables) {
            MoxRead::Dataset const dataset = model.read(variable);
            std::cout << MoxRead::NodePath::of(model, node) << ": " << variable.datasetName() << ' '
                      << dataset.rows() << " x " << int{dataset.width} << '\n';
        }
    });
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    try {
        MoxRead::Model model(argv[1]);
        listDatasets(model);
        return 0;
    } catch (MoxRead::FormatError const& error) {
        std::cerr << argv[1] << ": " << error.what() << '\n';
        return 1;
    }
}
