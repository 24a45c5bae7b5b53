#include "Blocks.h"

#include <exchange/Error.h>

#include <vtkCompositeDataSet.h>
#include <vtkDataObjectTree.h>
#include <vtkDataObjectTreeIterator.h>
#include <vtkInformation.h>

#include <utility>

namespace VtkRead {

namespace {

/// What a mesh is called that stands alone in its file.
constexpr char const* nameOfOnly = "Mesh";

class Collector
{
public:
    std::vector<Block> blocks;

    void add(vtkDataObject* object, std::string const& name)
    {
        if (auto* const tree = vtkDataObjectTree::SafeDownCast(object))
            addChildren(*tree, name);
        else
            addLeaf(object, name);
    }

    void addChildrenOf(vtkDataObjectTree& tree)
    {
        auto const children = childrenOf(tree);
        for (children->InitTraversal(); !children->IsDoneWithTraversal();
             children->GoToNextItem()) {
            vtkDataObject* const child = children->GetCurrentDataObject();
            std::string const name = givenName(*children);
            if (child != nullptr || !name.empty())
                add(child, name.empty() ? numberedName(tree, *children) : name);
        }
    }

private:
    static bool hasPieces(vtkDataObjectTree& tree)
    {
        return tree.IsA("vtkMultiPieceDataSet") != 0 || tree.IsA("vtkPartitionedDataSet") != 0;
    }

    /// Goes over the tree's own children, those that are empty as well.
    static vtkSmartPointer<vtkDataObjectTreeIterator> childrenOf(vtkDataObjectTree& tree)
    {
        auto children = vtkSmartPointer<vtkDataObjectTreeIterator>::New();
        children->SetDataSet(&tree);
        children->SetVisitOnlyLeaves(0);
        children->SetTraverseSubTree(0);
        children->SetSkipEmptyNodes(0);
        return children;
    }

    static std::string numberedName(vtkDataObjectTree& tree, vtkDataObjectTreeIterator& child)
    {
        return (hasPieces(tree) ? "Piece " : "Block ") +
               std::to_string(child.GetCurrentFlatIndex());
    }

    static std::string givenName(vtkDataObjectTreeIterator& child)
    {
        if (child.HasCurrentMetaData() == 0)
            return {};
        char const* const name = child.GetCurrentMetaData()->Get(vtkCompositeDataSet::NAME());
        return name == nullptr ? std::string() : std::string(name);
    }

    /// The only child of the tree, or null when there are none or several.
    static vtkDataObject* onlyChild(vtkDataObjectTree& tree)
    {
        auto const children = childrenOf(tree);
        children->InitTraversal();
        if (children->IsDoneWithTraversal())
            return nullptr;
        vtkDataObject* const child = children->GetCurrentDataObject();
        children->GoToNextItem();
        return children->IsDoneWithTraversal() ? child : nullptr;
    }

    void addChildren(vtkDataObjectTree& tree, std::string const& name)
    {
        vtkDataObject* const only = onlyChild(tree);
        if (hasPieces(tree) && only != nullptr) {
            add(only, name);
            return;
        }
        groups_.push_back(name);
        addChildrenOf(tree);
        groups_.pop_back();
    }

    void addLeaf(vtkDataObject* object, std::string const& name)
    {
        auto* const data = vtkDataSet::SafeDownCast(object);
        if (object != nullptr && data == nullptr)
            throw Exchange::Error("'" + name + "' is a " + object->GetClassName() +
                                  ", which is no mesh.");
        blocks.push_back({name, groups_, data});
    }

    std::vector<std::string> groups_;
};

} // namespace

std::vector<Block> blocksOf(vtkDataObject* object)
{
    Collector collector;
    if (auto* const tree = vtkDataObjectTree::SafeDownCast(object))
        collector.addChildrenOf(*tree);
    else
        collector.add(object, nameOfOnly);
    return std::move(collector.blocks);
}

} // namespace VtkRead
