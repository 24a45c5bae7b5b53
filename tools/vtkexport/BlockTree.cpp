#include "vtkexport/BlockTree.h"

#include "vtkexport/XmlText.h"

#include <vtkCompositeDataSet.h>
#include <vtkInformation.h>

#include <cstdint>
#include <map>
#include <string>

namespace VtkExport {

namespace {

using Blocks = std::map<std::uint32_t, vtkSmartPointer<vtkMultiBlockDataSet>>;

void append(vtkMultiBlockDataSet& parent, vtkDataObject* block, std::string const& name)
{
    unsigned int const place = parent.GetNumberOfBlocks();
    parent.SetBlock(place, block);
    parent.GetMetaData(place)->Set(vtkCompositeDataSet::NAME(), xmlText(name).c_str());
}

// The block of the closest group above a node.
vtkMultiBlockDataSet& parentBlock(MoxRead::Model const& model, MoxRead::Node const& node,
                                  Blocks& blocks)
{
    std::uint32_t id = node.parent;
    while (id != 0 && blocks.count(id) == 0)
        id = model.node(id).parent;
    return *blocks.at(id);
}

// A node comes before those below it.
Blocks addGroups(MoxRead::Model const& model, vtkMultiBlockDataSet* root)
{
    Blocks blocks = {{0, root}, {1, root}};
    for (MoxRead::Node const& node : model.nodes()) {
        if (node.group() == nullptr || node.parent == 0)
            continue;
        auto const block = vtkSmartPointer<vtkMultiBlockDataSet>::New();
        append(parentBlock(model, node, blocks), block, node.name);
        blocks.emplace(node.id, block);
    }
    return blocks;
}

} // namespace

vtkSmartPointer<vtkMultiBlockDataSet> blockTreeOf(MoxRead::Model const& model,
                                                  std::vector<std::unique_ptr<Grid>> const& grids)
{
    auto root = vtkSmartPointer<vtkMultiBlockDataSet>::New();
    Blocks blocks = addGroups(model, root);
    for (auto const& grid : grids) {
        Part const& part = *grid->placements().front().part;
        std::uint32_t const group = part.groups.empty() ? 0 : part.groups.back()->id;
        append(*blocks.at(group), grid->get(), part.name);
    }
    return root;
}

} // namespace VtkExport
