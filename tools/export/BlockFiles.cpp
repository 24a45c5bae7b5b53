#include "BlockFiles.h"

#include "XmlFiles.h"
#include "XmlText.h"

#include <vtkNew.h>
#include <vtkSmartPointer.h>
#include <vtkXMLDataElement.h>

#include <cstdint>
#include <map>
#include <string>

namespace Export {

namespace {

using Element = vtkSmartPointer<vtkXMLDataElement>;

/// The groups of a model as nested elements.
class BlockIndex
{
public:
    explicit BlockIndex(MoxRead::Model const& model) : model_(model)
    {
        root_->SetName("vtkMultiBlockDataSet");
        groups_ = {{0, root_}, {1, root_}};
        // A node comes before those below it.
        for (MoxRead::Node const& node : model.nodes())
            if (node.group() != nullptr && node.parent != 0)
                groups_.emplace(node.id, add("Block", groupAbove(node), node.name));
    }

    void addGrid(ModelShape const& shape, std::string const& file)
    {
        std::uint32_t const group = shape.groups.empty() ? 0 : shape.groups.back()->id;
        add("DataSet", *groups_.at(group), shape.name)->SetAttribute("file", file.c_str());
    }

    vtkXMLDataElement& root() { return *root_; }

private:
    static Element add(char const* kind, vtkXMLDataElement& parent, std::string const& name)
    {
        auto element = Element::New();
        element->SetName(kind);
        element->SetIntAttribute("index", parent.GetNumberOfNestedElements());
        element->SetAttribute("name", xmlText(name).c_str());
        parent.AddNestedElement(element);
        return element;
    }

    // The closest one, for a group may be below a shape.
    vtkXMLDataElement& groupAbove(MoxRead::Node const& node) const
    {
        std::uint32_t id = node.parent;
        while (groups_.count(id) == 0)
            id = model_.node(id).parent;
        return *groups_.at(id);
    }

    MoxRead::Model const& model_;
    vtkNew<vtkXMLDataElement> root_;
    std::map<std::uint32_t, Element> groups_;
};

} // namespace

void writeBlocks(MoxRead::Model const& model, std::vector<std::unique_ptr<Grid>> const& grids,
                 std::filesystem::path const& file)
{
    std::filesystem::path const folder = std::filesystem::path(file).replace_extension();
    std::filesystem::create_directories(folder);
    BlockIndex index(model);
    std::size_t number = 0;
    for (auto const& grid : grids) {
        std::string const name =
            folder.filename().string() + "_" + std::to_string(number++) + ".vtu";
        writeGrid(*grid->get(), folder / name);
        index.addGrid(*grid->placements().front().shape, folder.filename() / name);
    }
    writeXml("vtkMultiBlockDataSet", index.root(), file);
}

} // namespace Export
