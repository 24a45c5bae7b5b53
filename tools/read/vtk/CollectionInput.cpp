#include "CollectionInput.h"

#include "StepName.h"
#include "XmlInput.h"

#include <exchange/Error.h>

#include <vtkCompositeDataSet.h>
#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLUtilities.h>

#include <iterator>

namespace VtkRead {

namespace {

using Exchange::Error;

std::string attribute(vtkXMLDataElement& element, char const* name)
{
    char const* const text = element.GetAttribute(name);
    return text == nullptr ? std::string() : std::string(text);
}

void setName(vtkMultiBlockDataSet& blocks, unsigned int index, std::string const& name)
{
    blocks.GetMetaData(index)->Set(vtkCompositeDataSet::NAME(), name.c_str());
}

/// The block of that name, made if it isn't there.
vtkMultiBlockDataSet& groupIn(vtkMultiBlockDataSet& root, std::string const& name)
{
    for (unsigned int i = 0; i < root.GetNumberOfBlocks(); ++i)
        if (auto* const group = vtkMultiBlockDataSet::SafeDownCast(root.GetBlock(i)))
            if (name == root.GetMetaData(i)->Get(vtkCompositeDataSet::NAME()))
                return *group;
    vtkNew<vtkMultiBlockDataSet> group;
    unsigned int const index = root.GetNumberOfBlocks();
    root.SetBlock(index, group);
    setName(root, index, name);
    return *group;
}

} // namespace

CollectionInput::CollectionInput(std::filesystem::path const& path)
{
    addEntries(path);
    if (entries_.empty())
        throw Error("The series names no files.");
    if (hasTimes_)
        for (auto const& entry : entries_)
            times_.push_back(entry.first);
}

void CollectionInput::addEntries(std::filesystem::path const& path)
{
    vtkSmartPointer<vtkXMLDataElement> const root = vtkSmartPointer<vtkXMLDataElement>::Take(
        vtkXMLUtilities::ReadElementFromFile(path.c_str()));
    vtkXMLDataElement* const collection =
        root == nullptr ? nullptr : root->FindNestedElementWithName("Collection");
    if (collection == nullptr)
        throw Error("The file is no sound list of a series.");
    for (int i = 0; i < collection->GetNumberOfNestedElements(); ++i) {
        vtkXMLDataElement& element = *collection->GetNestedElement(i);
        double time = 0;
        if (element.GetScalarAttribute("timestep", time) != 0)
            hasTimes_ = true;
        std::string const name = attribute(element, "name");
        std::string const part = attribute(element, "part");
        entries_[time].push_back({path.parent_path() / attribute(element, "file"),
                                  attribute(element, "group"),
                                  name.empty() ? "Part " + (part.empty() ? "0" : part) : name});
    }
}

std::vector<CollectionInput::Entry> const& CollectionInput::entriesOf(std::size_t step) const
{
    return std::next(entries_.begin(), static_cast<std::ptrdiff_t>(step))->second;
}

std::string CollectionInput::stepName(std::size_t step)
{
    return stepNameIn(entriesOf(step).front().file);
}

vtkSmartPointer<vtkDataObject> CollectionInput::read(std::size_t step)
{
    std::vector<Entry> const& entries = entriesOf(step);
    if (entries.size() == 1 && entries.front().group.empty())
        return XmlInput(entries.front().file).read(0);
    auto blocks = vtkSmartPointer<vtkMultiBlockDataSet>::New();
    for (Entry const& entry : entries) {
        vtkMultiBlockDataSet& group = entry.group.empty() ? *blocks : groupIn(*blocks, entry.group);
        unsigned int const index = group.GetNumberOfBlocks();
        group.SetBlock(index, XmlInput(entry.file).read(0));
        setName(group, index, entry.name);
    }
    return blocks;
}

} // namespace VtkRead
