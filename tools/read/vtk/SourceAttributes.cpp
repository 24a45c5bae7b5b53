#include "SourceAttributes.h"

#include "Arrays.h"

#include <vtkDataArray.h>
#include <vtkDataObjectTree.h>
#include <vtkDataObjectTreeIterator.h>
#include <vtkDataSet.h>
#include <vtkFieldData.h>
#include <vtkStringArray.h>

#include <algorithm>
#include <limits>
#include <set>
#include <string>

namespace VtkRead {

namespace {

using Exchange::Attribute;
using Exchange::AttributeList;
using Exchange::Report;

constexpr char const* timeName = "TimeValue";
/// A mark that the CGNS reader makes, not its file.
constexpr char const* patchMark = "ispatch";
/// Where the OpenFOAM reader found its case: of this machine, not of the result.
constexpr char const* casePath = "CasePath";

std::optional<double> timeOf(vtkDataObject* object)
{
    vtkFieldData* const fields = object == nullptr ? nullptr : object->GetFieldData();
    vtkDataArray* const time = fields == nullptr ? nullptr : fields->GetArray(timeName);
    if (time == nullptr || time->GetNumberOfTuples() != 1 || time->GetNumberOfComponents() != 1)
        return {};
    return time->GetComponent(0, 0);
}

void addNumber(AttributeList& attributes, std::string const& name, vtkDataArray& array,
               Report& report)
{
    double const value = array.GetComponent(0, 0);
    bool const isInt = isIntegral(array) && value >= std::numeric_limits<int>::min() &&
                       value <= std::numeric_limits<int>::max();
    if (isInt)
        attributes.emplace_back(name, static_cast<int>(value));
    else
        attributes.emplace_back(name, report.narrow(value));
}

void addAttribute(AttributeList& attributes, std::string const& name, vtkAbstractArray& array,
                  Report& report)
{
    if (auto* const texts = vtkStringArray::SafeDownCast(&array))
        attributes.emplace_back(name, std::string(texts->GetValue(0)));
    else
        addNumber(attributes, name, *vtkDataArray::SafeDownCast(&array), report);
}

bool isSingleValue(vtkAbstractArray& array)
{
    bool const isKnown = vtkStringArray::SafeDownCast(&array) != nullptr ||
                         vtkDataArray::SafeDownCast(&array) != nullptr;
    return isKnown && array.GetNumberOfValues() == 1;
}

/// Gathers what several objects say, in the order in which it comes up.
class Agreement
{
public:
    void add(AttributeList const& attributes)
    {
        for (Attribute const& attribute : attributes)
            add(attribute);
    }

    AttributeList agreed() const
    {
        AttributeList attributes;
        for (Attribute const& attribute : said_)
            if (disputed_.count(attribute.first) == 0)
                attributes.push_back(attribute);
        return attributes;
    }

    std::set<std::string> const& disputed() const { return disputed_; }

private:
    void add(Attribute const& attribute)
    {
        auto const known = std::find_if(said_.begin(), said_.end(), [&](Attribute const& said) {
            return said.first == attribute.first;
        });
        if (known == said_.end())
            said_.push_back(attribute);
        else if (known->second != attribute.second)
            disputed_.insert(attribute.first);
    }

    AttributeList said_;
    std::set<std::string> disputed_;
};

} // namespace

std::optional<double> timeIn(vtkDataObject* object)
{
    std::optional<double> time = timeOf(object);
    auto* const tree = vtkDataObjectTree::SafeDownCast(object);
    if (time || tree == nullptr)
        return time;
    vtkNew<vtkDataObjectTreeIterator> leaves;
    leaves->SetDataSet(tree);
    for (leaves->InitTraversal(); !time && !leaves->IsDoneWithTraversal(); leaves->GoToNextItem())
        time = timeOf(leaves->GetCurrentDataObject());
    return time;
}

AttributeList attributesIn(vtkDataObject* object, Report& report)
{
    AttributeList attributes;
    vtkFieldData* const fields = object == nullptr ? nullptr : object->GetFieldData();
    for (int i = 0; fields != nullptr && i < fields->GetNumberOfArrays(); ++i) {
        vtkAbstractArray& array = *fields->GetAbstractArray(i);
        std::string const name = arrayName(array, i);
        if (name == timeName || name == patchMark || name == casePath)
            continue;
        if (isSingleValue(array))
            addAttribute(attributes, name, array, report);
        else
            report.warn("The field data '" + name + "' is not a single value and was left out.");
    }
    return attributes;
}

AttributeList stepAttributes(vtkDataObject* object, std::vector<Block> const& blocks,
                             Report& report)
{
    Agreement agreement;
    agreement.add(attributesIn(object, report));
    for (Block const& block : blocks)
        if (block.data != object)
            agreement.add(attributesIn(block.data, report));
    for (std::string const& name : agreement.disputed())
        report.warn("The field data '" + name +
                    "' differs between the parts of a step and was left out.");
    return agreement.agreed();
}

} // namespace VtkRead
