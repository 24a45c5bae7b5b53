#include "DatasetNames.h"

#include "RecordSeparator.h"

namespace Exchange {

DatasetNames::DatasetNames()
{
    for (char const* const ofMesh :
         {"Coordinates", "Node Ids", "Connectivity", "Polylength", "Element IDs"})
        names_.make(ofMesh);
}

void DatasetNames::startStep()
{
    asked_.clear();
}

std::string DatasetNames::make(std::size_t part, Location location, std::string const& name,
                               Report& report)
{
    int const time = asked_[{part, location, name}]++;
    auto const [found, isNew] = known_.try_emplace({location, name, time});
    if (isNew)
        found->second = names_.make(withoutRecordSeparator(name, report));
    return found->second;
}

} // namespace Exchange
