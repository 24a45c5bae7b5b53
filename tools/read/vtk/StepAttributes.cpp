#include "StepAttributes.h"

#include "Fields.h"

#include <vtkDataSet.h>

#include <algorithm>
#include <set>
#include <string>

namespace VtkRead {

namespace {

using Exchange::Attribute;
using Exchange::AttributeList;

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

AttributeList stepAttributes(vtkDataObject* object, std::vector<Block> const& blocks,
                             Exchange::Report& report)
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
